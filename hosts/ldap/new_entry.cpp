// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/new_entry.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "directory/ascii_case.h"
#include "hosts/ldap/case_fold.h"
#include "hosts/ldap/ldap_status.h"

namespace pelora::ldap {
namespace {

struct DerivedClass {
  std::string_view name;
  std::string_view base;
};

// What is in neither column is derived from "top".
constexpr auto kDerivedClasses = std::to_array<DerivedClass>({
    {"organizationalPerson", "person"},
    {"user", "organizationalPerson"},
    {"contact", "organizationalPerson"},
    {"inetOrgPerson", "user"},
    {"computer", "user"},
    {"domainDNS", "domain"},
});

bool Contains(const AttributeValues& classes, std::string_view name) {
  return std::any_of(classes.begin(), classes.end(),
                     [name](const std::string& held) { return EqualsWithoutCase(held, name); });
}

/// Appends a class behind those that it is derived from.
void AppendWithBases(std::string_view name, AttributeValues& classes) {
  if (Contains(classes, name)) return;
  const auto* const derived =
      std::find_if(kDerivedClasses.begin(), kDerivedClasses.end(),
                   [name](const DerivedClass& row) { return EqualsWithoutCase(row.name, name); });
  if (derived != kDerivedClasses.end()) {
    AppendWithBases(derived->base, classes);
  } else if (!EqualsWithoutCase(name, "top")) {
    AppendWithBases("top", classes);
  }
  classes.emplace_back(name);
}

}  // namespace

void CompleteClasses(Entry& entry) {
  AttributeValues& given = entry.attributes["objectClass"];
  AttributeValues classes;
  for (const std::string& name : given) AppendWithBases(name, classes);
  given = std::move(classes);
}

StoreStatus CompleteNewEntry(const LdbConnection& connection, const Schema& schema, Entry& entry) {
  const LdbConnection::NamingAttribute naming = connection.NamingAttributeOf(entry.dn);
  if (!schema.Find(naming.attribute)) {
    return {kLdapNamingViolation, "no such naming attribute: " + naming.attribute};
  }
  AttributeMap spelled;
  for (auto& [name, values] : entry.attributes) {
    spelled.emplace(schema.SpellingOf(name), std::move(values));
  }
  entry.attributes = std::move(spelled);
  if (entry.attributes["objectClass"].empty()) {
    return {kLdapObjectClassViolation, "the entry has no class"};
  }
  for (const std::string& name : {schema.SpellingOf(naming.attribute), std::string("name")}) {
    AttributeValues& values = entry.attributes[name];
    if (values.empty()) values = {naming.value};
    if (values.size() != 1 || FoldCase(values.front()) != FoldCase(naming.value)) {
      return {kLdapNamingViolation, "attribute '" + name + "' differs from the entry's name"};
    }
  }
  return {};
}

}  // namespace pelora::ldap
