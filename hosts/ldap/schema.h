// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace pelora::ldap {

/// How an attribute's values are to be taken, by the directory's own syntaxes.
enum class Syntax : std::uint8_t {
  kString,
  kDistinguishedName,
  kBoolean,
  /// Integers and enumerations, 32 bits, signed.
  kInteger,
  kLargeInteger,
  /// Octet strings and security identifiers.
  kOctets,
  kTime,
  kSecurityDescriptor,
  /// A distinguished name with a binary or string part.
  kStructuredName,
};

/// What the schema says of one attribute.
struct AttributeType {
  Syntax syntax = Syntax::kString;
  bool is_single_valued = false;
};

/// The attributes that a directory knows.
class Schema {
 public:
  void Add(std::string_view name, AttributeType type);
  /// Compares names without case; nothing for an attribute that the directory does not know.
  [[nodiscard]] std::optional<AttributeType> Find(std::string_view name) const;
  [[nodiscard]] std::size_t size() const { return types_.size(); }

 private:
  std::map<std::string, AttributeType, std::less<>> types_;
};

/// The syntax that an attribute's `attributeSyntax` (an identifier such as "2.5.5.12") stands for;
/// nothing for an unknown identifier.
[[nodiscard]] std::optional<Syntax> SyntaxOfIdentifier(std::string_view identifier);

}  // namespace pelora::ldap
