// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/name_filter.h"

namespace pelora::ldap {

std::string EscapeFilterValue(std::string_view value) {
  constexpr std::string_view kSpecial("\\*()\0", 5);
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string escaped;
  escaped.reserve(value.size());
  for (const char letter : value) {
    if (kSpecial.find(letter) == std::string_view::npos) {
      escaped += letter;
      continue;
    }
    const auto byte = static_cast<unsigned char>(letter);
    escaped += '\\';
    escaped += kDigits[byte / 16U];
    escaped += kDigits[byte % 16U];
  }
  return escaped;
}

std::string FilterOfNames(std::span<const std::string> dns) {
  std::string filter = "(|";
  for (const std::string& dn : dns) filter += "(distinguishedName=" + EscapeFilterValue(dn) + ')';
  return filter + ')';
}

}  // namespace pelora::ldap
