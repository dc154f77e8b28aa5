// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/ldb_schema.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "directory/ascii_case.h"
#include "hosts/ldap/attribute_value.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/ldap_status.h"

namespace pelora::ldap {
namespace {

/// libldb knows these by itself.
constexpr auto kBuiltIn = std::to_array<std::string_view>({"objectClass", "distinguishedName"});

/// What single objects are searched for by. The list of those that have a value is written anew
/// with each object that gets it: what thousands have alike (a class, an account) would make each
/// new one dearer than the one before, and is found as quickly by looking at all of them.
constexpr auto kIndexed = std::to_array<const char*>({
    "cn",
    "ou",
    "name",
    "displayName",
    "sAMAccountName",
    "userPrincipalName",
    "mail",
    "otherMailbox",
    "member",
});

/// Absent is fine; present, it has to be a number.
bool ReadBound(const Entry& entry, const char* name, std::optional<std::int64_t>& bound) {
  const std::string text = FirstValue(entry, name);
  if (text.empty()) return true;
  bound = ParseLargeInteger(text);
  return bound.has_value();
}

bool IsBuiltIn(std::string_view name) {
  return std::ranges::any_of(
      kBuiltIn, [&](std::string_view known) { return EqualsWithoutCase(known, name); });
}

const char* ComparisonOf(Syntax syntax) {
  switch (syntax) {
    case Syntax::kString:
    case Syntax::kDistinguishedName:
    case Syntax::kStructuredName:
      return "CASE_INSENSITIVE";
    case Syntax::kInteger:
    case Syntax::kLargeInteger:
      return "INTEGER";
    case Syntax::kBoolean:
    case Syntax::kOctets:
    case Syntax::kTime:
    case Syntax::kSecurityDescriptor:
      return nullptr;
  }
  return nullptr;
}

}  // namespace

StoreStatus AddToSchema(const Entry& entry, Schema& schema) {
  const std::string name = FirstValue(entry, "lDAPDisplayName");
  const std::optional<Syntax> syntax = SyntaxOfIdentifier(FirstValue(entry, "attributeSyntax"));
  const std::string single = FirstValue(entry, "isSingleValued");
  AttributeType type{.syntax = syntax.value_or(Syntax::kString),
                     .is_single_valued = single == "TRUE"};
  const bool is_sound = !name.empty() && syntax.has_value() &&
                        (single == "TRUE" || single == "FALSE") &&
                        ReadBound(entry, "rangeLower", type.range_lower) &&
                        ReadBound(entry, "rangeUpper", type.range_upper);
  if (!is_sound) return {kLdapOther, "the attribute's definition is not understood: " + entry.dn};
  schema.Add(name, type);
  return {};
}

Entry MakeAttributesRecord(const Schema& schema) {
  Entry record{.dn = "@ATTRIBUTES", .attributes = {}};
  for (const auto& [name, type] : schema.types()) {
    const char* const comparison = ComparisonOf(type.syntax);
    if (comparison != nullptr && !IsBuiltIn(name)) record.attributes[name] = {comparison};
  }
  return record;
}

Entry MakeIndexRecord() {
  return {.dn = "@INDEXLIST",
          .attributes = {{"@IDXATTR", AttributeValues(kIndexed.begin(), kIndexed.end())},
                         {"@IDXONE", {"1"}}}};
}

Entry MakeOptionsRecord() {
  // A search below an object that is not there fails instead of finding nothing.
  return {.dn = "@OPTIONS", .attributes = {{"checkBaseOnSearch", {"TRUE"}}}};
}

Entry MakeRootRecord(const std::string& base) {
  return {.dn = kRootRecord,
          .attributes = {{"defaultNamingContext", {base}},
                         {"rootDomainNamingContext", {base}},
                         {"configurationNamingContext", {"CN=Configuration," + base}},
                         {"schemaNamingContext", {"CN=Schema,CN=Configuration," + base}}}};
}

}  // namespace pelora::ldap
