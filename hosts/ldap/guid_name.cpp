// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/guid_name.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "directory/ascii_case.h"
#include "hosts/ldap/object_name.h"

namespace pelora::ldap {
namespace {

constexpr std::string_view kMark = "\\0ADEL:";
constexpr std::string_view kContainer = "CN=Deleted Objects,";
constexpr std::string_view kDigits = "0123456789abcdef";
constexpr std::size_t kGuidBytes = 16;
constexpr std::size_t kTextLength = 36;
/// The bytes in the order in which they are written: the first three parts are numbers, lowest byte
/// first.
constexpr std::array<std::size_t, kGuidBytes> kOrder = {3, 2, 1,  0,  5,  4,  7,  6,
                                                        8, 9, 10, 11, 12, 13, 14, 15};

bool BeginsPart(std::size_t at) { return at == 4 || at == 6 || at == 8 || at == 10; }

/// What of a name stands at the end for the domain.
std::string_view DomainOf(std::string_view dn) {
  while (!dn.empty() && !EqualsWithoutCase(dn.substr(0, 3), "DC=")) dn = ContainerOf(dn);
  return dn;
}

}  // namespace

std::string GuidBytesText(std::string_view guid) {
  std::string text;
  for (std::size_t at = 0; at < kGuidBytes && guid.size() == kGuidBytes; ++at) {
    if (BeginsPart(at)) text += '-';
    const auto byte = static_cast<unsigned char>(guid[kOrder.at(at)]);
    text += {kDigits[byte >> 4U], kDigits[byte & 0xFU]};
  }
  return text;
}

std::string DeletedName(std::string_view dn, std::string_view guid) {
  std::string name(FirstPart(dn));
  name.append(kMark).append(GuidBytesText(guid));
  return name.append(",").append(kContainer).append(DomainOf(dn));
}

std::optional<std::string> GuidOfDeletedName(std::string_view name) {
  const std::size_t mark = name.find(kMark);
  if (mark == std::string_view::npos) return std::nullopt;
  std::string_view text = name.substr(mark + kMark.size());
  if (!text.substr(std::min(kTextLength, text.size())).starts_with(",")) return std::nullopt;
  text = text.substr(0, kTextLength);
  std::string guid(kGuidBytes, '\0');
  std::size_t place = 0;
  for (std::size_t at = 0; at < kGuidBytes; ++at) {
    if (BeginsPart(at) && text[place++] != '-') return std::nullopt;
    const std::size_t high = kDigits.find(AsciiLowerCase(text[place]));
    const std::size_t low = kDigits.find(AsciiLowerCase(text[place + 1]));
    if (high == std::string_view::npos || low == std::string_view::npos) return std::nullopt;
    guid[kOrder.at(at)] = static_cast<char>(high * 16 + low);
    place += 2;
  }
  return guid;
}

}  // namespace pelora::ldap
