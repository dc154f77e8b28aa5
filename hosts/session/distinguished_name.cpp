// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/distinguished_name.h"

#include <algorithm>
#include <array>

#include "directory/ascii_case.h"

namespace pelora::session {

bool IsDistinguishedName(std::string_view text) {
  constexpr std::array<std::string_view, 3> kPrefixes = {"CN=", "OU=", "DC="};
  return std::ranges::any_of(kPrefixes, [text](std::string_view prefix) {
    return EqualsWithoutCase(text.substr(0, prefix.size()), prefix);
  });
}

std::string_view ParentName(std::string_view dn) {
  for (std::size_t at = 0; at < dn.size(); ++at) {
    if (dn[at] == '\\') {
      ++at;
    } else if (dn[at] == ',') {
      return dn.substr(at + 1);
    }
  }
  return {};
}

}  // namespace pelora::session
