// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/object_name.h"

#include <cstddef>

#include "directory/ascii_case.h"

namespace pelora::ldap {
namespace {

constexpr std::string_view kSigns = ",+\"\\<>;=";

bool IsControl(char character) {
  constexpr unsigned char kFirstPrintable = 0x20;
  constexpr unsigned char kDelete = 0x7F;
  const auto code = static_cast<unsigned char>(character);
  return code < kFirstPrintable || code == kDelete;
}

bool IsEscaped(std::string_view value, std::size_t place) {
  const char character = value[place];
  if (kSigns.find(character) != std::string_view::npos) return true;
  if (character == '#') return place == 0;
  return character == ' ' && (place == 0 || place + 1 == value.size());
}

}  // namespace

std::string EscapeNameValue(std::string_view value) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string escaped;
  escaped.reserve(value.size());
  for (std::size_t place = 0; place < value.size(); ++place) {
    const auto code = static_cast<unsigned char>(value[place]);
    if (IsControl(value[place])) {
      escaped += {'\\', kDigits[code >> 4U], kDigits[code & 0xFU]};
      continue;
    }
    if (IsEscaped(value, place)) escaped += '\\';
    escaped += value[place];
  }
  return escaped;
}

std::string_view NamingAttributeOfClass(std::string_view object_class) {
  return EqualsWithoutCase(object_class, "organizationalUnit") ? "OU" : "CN";
}

std::string ChildName(std::string_view container, std::string_view object_class,
                      std::string_view name) {
  std::string child(NamingAttributeOfClass(object_class));
  child += "=" + EscapeNameValue(name) + ",";
  return child.append(container);
}

std::string_view FirstPart(std::string_view dn) {
  for (std::size_t at = 0; at < dn.size(); ++at) {
    if (dn[at] == '\\') {
      ++at;
    } else if (dn[at] == ',') {
      return dn.substr(0, at);
    }
  }
  return dn;
}

std::string_view ContainerOf(std::string_view dn) {
  const std::size_t first = FirstPart(dn).size();
  return first < dn.size() ? dn.substr(first + 1) : std::string_view();
}

std::string RenamedName(std::string_view dn, std::string_view name) {
  std::string renamed(dn.substr(0, dn.find('=') + 1));
  renamed += EscapeNameValue(name);
  if (const std::string_view container = ContainerOf(dn); !container.empty()) {
    renamed.append(",").append(container);
  }
  return renamed;
}

std::string MovedName(std::string_view dn, std::string_view container) {
  std::string moved(FirstPart(dn));
  return moved.append(",").append(container);
}

}  // namespace pelora::ldap
