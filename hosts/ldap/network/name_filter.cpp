// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/name_filter.h"

#include <algorithm>

#include "directory/ascii_case.h"
#include "hosts/ldap/object_name.h"

namespace pelora::ldap {
namespace {

/// Whether a name's first part says its value as it is, of an attribute that names an object and
/// does nothing else: any user has an `ou` who is given one, and a thousand of a unit's users may
/// have that of another unit below it.
bool IsPlain(std::string_view part) {
  const std::size_t sign = part.find('=');
  if (sign == std::string_view::npos || sign + 1 == part.size()) return false;
  return EqualsWithoutCase(part.substr(0, sign), "CN") &&
         part.find_first_of("\\\"+", sign) == std::string_view::npos;
}

}  // namespace

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

std::size_t CountSiblings(std::span<const std::string> dns, std::size_t most) {
  if (dns.empty()) return 0;
  const std::string_view container = ContainerOf(dns.front());
  if (container.empty()) return 0;
  std::size_t count = 0;
  while (count < std::min(dns.size(), most) && IsPlain(FirstPart(dns[count])) &&
         ContainerOf(dns[count]) == container) {
    ++count;
  }
  return count;
}

std::string FilterOfSiblings(std::span<const std::string> siblings) {
  std::string filter = "(|";
  for (const std::string& dn : siblings) {
    const std::string_view part = FirstPart(dn);
    const std::size_t value = part.find('=') + 1;
    filter += '(';
    filter.append(part.substr(0, value)).append(EscapeFilterValue(part.substr(value))) += ')';
  }
  return filter + ')';
}

}  // namespace pelora::ldap
