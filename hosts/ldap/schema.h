// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "hosts/ldap/attribute_name.h"

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
  /// Bounds of an integer's value or of a string's length, both allowed themselves.
  std::optional<std::int64_t> range_lower{};
  std::optional<std::int64_t> range_upper{};
};

/// The attributes that a directory knows, by name without case.
class Schema {
 public:
  using Types = std::map<std::string, AttributeType, AttributeNameLess>;

  /// A name that is there already gets the new type.
  void Add(std::string_view name, const AttributeType& type);
  /// Nothing for an attribute that the directory does not know.
  [[nodiscard]] std::optional<AttributeType> Find(std::string_view name) const;
  /// The name as the schema spells it; as it is when the directory does not know it.
  [[nodiscard]] std::string SpellingOf(std::string_view name) const;
  [[nodiscard]] const Types& types() const { return types_; }

 private:
  Types types_;
};

/// The syntax that an attribute's `attributeSyntax` (an identifier such as "2.5.5.12") stands for;
/// nothing for an unknown identifier.
[[nodiscard]] std::optional<Syntax> SyntaxOfIdentifier(std::string_view identifier);

}  // namespace pelora::ldap
