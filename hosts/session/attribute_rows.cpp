// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/attribute_rows.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "directory/ascii_case.h"
#include "hosts/ldap/guid_name.h"
#include "hosts/session/utf8_check.h"
#include "hosts/session/visible_text.h"

namespace pelora::session {
namespace {

constexpr std::string_view kHexDigits = "0123456789abcdef";
/// Of longer values the beginning is shown.
constexpr std::size_t kShownBytes = 64;
constexpr std::size_t kGuidBytes = 16;

std::uint32_t Byte(std::string_view bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]);
}

std::string Hex(std::string_view bytes) {
  std::string text;
  for (const char letter : bytes) {
    const auto byte = static_cast<unsigned char>(letter);
    text += {kHexDigits[byte >> 4U], kHexDigits[byte & 0xFU]};
  }
  return text;
}

std::string BytesText(const std::string& value) {
  if (value.size() <= kShownBytes) return Hex(value);
  return Hex(std::string_view(value).substr(0, kShownBytes)) + "... (" +
         std::to_string(value.size()) + " bytes)";
}

/// "S-1-5-21-...": a version, an authority of six bytes, and parts of four bytes, lowest first.
std::optional<std::string> SidText(const std::string& value) {
  constexpr std::size_t kHead = 8;
  constexpr std::size_t kPart = 4;
  if (value.size() < kHead || value.size() != kHead + kPart * Byte(value, 1)) return std::nullopt;
  std::uint64_t authority = 0;
  for (std::size_t at = 2; at < kHead; ++at) authority = authority << 8U | Byte(value, at);
  std::string text = "S-" + std::to_string(Byte(value, 0)) + "-" + std::to_string(authority);
  for (std::size_t at = kHead; at < value.size(); at += kPart) {
    const std::uint32_t part = Byte(value, at) | Byte(value, at + 1) << 8U |
                               Byte(value, at + 2) << 16U | Byte(value, at + 3) << 24U;
    text += "-" + std::to_string(part);
  }
  return text;
}

std::string ValueText(const ldap::Schema& schema, const std::string& attribute,
                      const std::string& value) {
  const std::optional<ldap::AttributeType> type = schema.Find(attribute);
  const bool is_bytes = type && (type->syntax == ldap::Syntax::kOctets ||
                                 type->syntax == ldap::Syntax::kSecurityDescriptor);
  if (!is_bytes && !FirstInvalidByte(value) && value.find('\0') == std::string::npos) return value;
  std::optional<std::string> known;
  if (EqualsWithoutCase(attribute, "objectGUID") && value.size() == kGuidBytes) {
    known = ldap::GuidBytesText(value);
  }
  if (EqualsWithoutCase(attribute, "objectSid")) known = SidText(value);
  return known ? *known : BytesText(value);
}

}  // namespace

std::vector<AttributeRow> AttributeRowsOf(const ldap::Schema& schema, const ldap::Entry& entry) {
  std::vector<AttributeRow> rows;
  for (const auto& [name, values] : entry.attributes) {
    for (const std::string& value : values) {
      rows.push_back({.attribute = name, .value = ValueText(schema, name, value)});
    }
  }
  return rows;
}

std::string TextOf(const std::vector<AttributeRow>& rows) {
  std::string text;
  for (const AttributeRow& row : rows) {
    text += row.attribute + "\t" + OnOneLine(row.value) + "\n";
  }
  return text;
}

}  // namespace pelora::session
