// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/distinguished_name.h"

#include <algorithm>
#include <array>

#include "directory/ascii_case.h"
#include "hosts/ldap/object_name.h"

namespace pelora::session {

bool IsDistinguishedName(std::string_view text) {
  constexpr std::array<std::string_view, 3> kPrefixes = {"CN=", "OU=", "DC="};
  return std::ranges::any_of(kPrefixes, [text](std::string_view prefix) {
    return EqualsWithoutCase(text.substr(0, prefix.size()), prefix);
  });
}

std::string_view ParentName(std::string_view dn) { return ldap::ContainerOf(dn); }

}  // namespace pelora::session
