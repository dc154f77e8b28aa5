// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/schema.h"

#include <array>
#include <utility>

namespace pelora::ldap {
namespace {

constexpr auto kSyntaxes = std::to_array<std::pair<std::string_view, Syntax>>({
    {"2.5.5.1", Syntax::kDistinguishedName},
    {"2.5.5.2", Syntax::kString},
    {"2.5.5.3", Syntax::kString},
    {"2.5.5.4", Syntax::kString},
    {"2.5.5.5", Syntax::kString},
    {"2.5.5.6", Syntax::kString},
    {"2.5.5.7", Syntax::kStructuredName},
    {"2.5.5.8", Syntax::kBoolean},
    {"2.5.5.9", Syntax::kInteger},
    {"2.5.5.10", Syntax::kOctets},
    {"2.5.5.11", Syntax::kTime},
    {"2.5.5.12", Syntax::kString},
    {"2.5.5.13", Syntax::kString},
    {"2.5.5.14", Syntax::kStructuredName},
    {"2.5.5.15", Syntax::kSecurityDescriptor},
    {"2.5.5.16", Syntax::kLargeInteger},
    {"2.5.5.17", Syntax::kOctets},
});

}  // namespace

void Schema::Add(std::string_view name, const AttributeType& type) {
  types_.insert_or_assign(std::string(name), type);
}

std::optional<AttributeType> Schema::Find(std::string_view name) const {
  const auto found = types_.find(name);
  if (found == types_.end()) return std::nullopt;
  return found->second;
}

std::string Schema::SpellingOf(std::string_view name) const {
  const auto found = types_.find(name);
  return found == types_.end() ? std::string(name) : found->first;
}

std::optional<Syntax> SyntaxOfIdentifier(std::string_view identifier) {
  for (const auto& [known, syntax] : kSyntaxes) {
    if (known == identifier) return syntax;
  }
  return std::nullopt;
}

}  // namespace pelora::ldap
