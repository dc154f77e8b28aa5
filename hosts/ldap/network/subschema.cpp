// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/subschema.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "hosts/ldap/attribute_value.h"

namespace pelora::ldap {
namespace {

constexpr auto kSyntaxes = std::to_array<std::pair<std::string_view, Syntax>>({
    {"1.3.6.1.4.1.1466.115.121.1.5", Syntax::kOctets},
    {"1.3.6.1.4.1.1466.115.121.1.7", Syntax::kBoolean},
    {"1.3.6.1.4.1.1466.115.121.1.12", Syntax::kDistinguishedName},
    {"1.3.6.1.4.1.1466.115.121.1.15", Syntax::kString},
    {"1.3.6.1.4.1.1466.115.121.1.24", Syntax::kTime},
    {"1.3.6.1.4.1.1466.115.121.1.26", Syntax::kString},
    {"1.3.6.1.4.1.1466.115.121.1.27", Syntax::kInteger},
    {"1.3.6.1.4.1.1466.115.121.1.36", Syntax::kString},
    {"1.3.6.1.4.1.1466.115.121.1.38", Syntax::kString},
    {"1.3.6.1.4.1.1466.115.121.1.40", Syntax::kOctets},
    {"1.3.6.1.4.1.1466.115.121.1.43", Syntax::kString},
    {"1.3.6.1.4.1.1466.115.121.1.44", Syntax::kString},
    {"1.3.6.1.4.1.1466.115.121.1.53", Syntax::kTime},
    {"1.2.840.113556.1.4.903", Syntax::kStructuredName},
    {"1.2.840.113556.1.4.904", Syntax::kStructuredName},
    {"1.2.840.113556.1.4.905", Syntax::kString},
    {"1.2.840.113556.1.4.906", Syntax::kLargeInteger},
    {"1.2.840.113556.1.4.907", Syntax::kSecurityDescriptor},
    {"1.2.840.113556.1.4.1221", Syntax::kString},
    {"1.2.840.113556.1.4.1362", Syntax::kString},
});

/// The words of a description: parentheses, texts in quotes, and what stands between spaces.
class Words {
 public:
  explicit Words(std::string_view text) : rest_(text) {}

  /// Nothing at the end.
  std::optional<std::string_view> Next() {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t"), rest_.size()));
    if (rest_.empty()) return std::nullopt;
    if (rest_.front() == '\'') {
      const std::size_t end = std::min(rest_.find('\'', 1), rest_.size());
      const std::string_view text = rest_.substr(1, end - 1);
      rest_.remove_prefix(std::min(end + 1, rest_.size()));
      return text;
    }
    const bool is_bracket = rest_.front() == '(' || rest_.front() == ')';
    return Take(is_bracket ? 1 : std::min(rest_.find_first_of(" \t()'"), rest_.size()));
  }

 private:
  std::string_view Take(std::size_t length) {
    const std::string_view word = rest_.substr(0, length);
    rest_.remove_prefix(length);
    return word;
  }

  std::string_view rest_;
};

/// What is of use here of one description, of either kind.
struct Description {
  std::vector<std::string_view> names;
  std::string_view syntax;
  bool is_single_valued = false;
  std::optional<std::int64_t> range_lower;
  std::optional<std::int64_t> range_upper;
};

/// One name, or a list of names in parentheses.
void ReadNames(Words& words, Description& description) {
  std::optional<std::string_view> word = words.Next();
  if (word != "(") {
    if (word) description.names.push_back(*word);
    return;
  }
  for (word = words.Next(); word && word != ")"; word = words.Next()) {
    description.names.push_back(*word);
  }
}

Description Describe(std::string_view text) {
  Description description;
  Words words(text);
  while (const std::optional<std::string_view> word = words.Next()) {
    if (word == "NAME") {
      ReadNames(words, description);
    } else if (word == "DESC") {
      // Its text may hold any of these words.
      words.Next();
    } else if (word == "SYNTAX") {
      description.syntax = words.Next().value_or(std::string_view());
    } else if (word == "SINGLE-VALUE") {
      description.is_single_valued = true;
    } else if (word == "RANGE-LOWER") {
      description.range_lower = ParseLargeInteger(words.Next().value_or(std::string_view()));
    } else if (word == "RANGE-UPPER") {
      description.range_upper = ParseLargeInteger(words.Next().value_or(std::string_view()));
    }
  }
  return description;
}

}  // namespace

std::optional<Syntax> SyntaxOfLdapIdentifier(std::string_view identifier) {
  identifier = identifier.substr(0, identifier.find('{'));
  for (const auto& [known, syntax] : kSyntaxes) {
    if (known == identifier) return syntax;
  }
  return std::nullopt;
}

Schema ReadSubschema(const std::vector<std::string>& types,
                     const std::vector<std::string>& bounds) {
  Schema schema;
  for (const std::string& text : types) {
    const Description description = Describe(text);
    const std::optional<Syntax> syntax = SyntaxOfLdapIdentifier(description.syntax);
    if (!syntax) continue;
    for (const std::string_view name : description.names) {
      if (name.empty()) continue;
      schema.Add(name, {.syntax = *syntax, .is_single_valued = description.is_single_valued});
    }
  }
  for (const std::string& text : bounds) {
    const Description description = Describe(text);
    for (const std::string_view name : description.names) {
      std::optional<AttributeType> type = schema.Find(name);
      if (!type) continue;
      type->range_lower = description.range_lower;
      type->range_upper = description.range_upper;
      schema.Add(name, *type);
    }
  }
  return schema;
}

}  // namespace pelora::ldap
