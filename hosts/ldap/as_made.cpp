// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/as_made.h"

#include <algorithm>
#include <array>
#include <set>
#include <string>

#include "directory/ascii_case.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/value_equality.h"

namespace pelora::ldap {
namespace {

constexpr auto kOwnDoing =
    std::to_array<std::string_view>({"objectClass", "name", "distinguishedName"});

/// A directory completes the classes of what it is given.
bool IsCompleted(std::string_view attribute) { return EqualsWithoutCase(attribute, "objectClass"); }

std::set<std::string> KeysOf(Syntax syntax, const AttributeValues& values) {
  std::set<std::string> keys;
  for (const std::string& value : values) keys.insert(EditingKey(syntax, value));
  return keys;
}

}  // namespace

StoreStatus CheckKept(const Schema& schema, const Entry& made, const Entry& now) {
  for (const auto& [name, values] : made.attributes) {
    if (IsCompleted(name)) continue;
    const std::optional<AttributeType> type = schema.Find(name);
    const Syntax syntax = type ? type->syntax : Syntax::kString;
    if (KeysOf(syntax, ValuesOf(now, name)) != KeysOf(syntax, values)) {
      return {kLdapAssertionFailed,
              "attribute '" + name + "' was changed since the object was made"};
    }
  }
  return {};
}

StoreStatus CheckNothingNew(const Entry& made, const Entry& now, std::string_view naming) {
  for (const auto& [name, values] : now.attributes) {
    const bool is_own = EqualsWithoutCase(name, naming) ||
                        std::ranges::any_of(kOwnDoing, [&given = name](std::string_view own) {
                          return EqualsWithoutCase(given, own);
                        });
    if (!is_own && !made.attributes.contains(name)) {
      return {kLdapAssertionFailed, "attribute '" + name + "' was set since the object was made"};
    }
  }
  return {};
}

StoreStatus CheckSame(const Schema& schema, const Entry& seen, const Entry& now) {
  for (const auto& [name, values] : seen.attributes) {
    const std::optional<AttributeType> type = schema.Find(name);
    const Syntax syntax = type ? type->syntax : Syntax::kString;
    if (KeysOf(syntax, ValuesOf(now, name)) != KeysOf(syntax, values)) {
      return {kLdapAssertionFailed, "the object of this name is not the one that was seen"};
    }
  }
  return {};
}

std::vector<std::string> AttributeNames(const Entry& entry) {
  std::vector<std::string> names;
  for (const auto& [name, values] : entry.attributes) names.push_back(name);
  return names;
}

}  // namespace pelora::ldap
