// SPDX-License-Identifier: Apache-2.0
// Objects that are renamed, moved and deleted, with what lies below them.
#include <algorithm>
#include <utility>

#include "directory/ascii_case.h"
#include "hosts/ldap/as_made.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/ldb_changes.h"
#include "hosts/ldap/name_key.h"

namespace pelora::ldap {
namespace {

constexpr const char* kEveryObject = "(distinguishedName=*)";

/// The attributes that hold names of other objects.
std::vector<std::string> NameAttributes(const Schema& schema) {
  std::vector<std::string> names;
  for (const auto& [name, type] : schema.types()) {
    // What an object itself is called is no attribute of its record.
    const bool is_own = EqualsWithoutCase(name, "distinguishedName");
    if (type.syntax == Syntax::kDistinguishedName && !is_own) names.push_back(name);
  }
  return names;
}

}  // namespace

StoreStatus LdbChanges::CheckNewName(const std::string& dn, const std::string& to) const {
  if (!connection_.IsName(to)) return {kLdapInvalidDnSyntax, "not a distinguished name: " + to};
  const LdbConnection::NamingAttribute before = connection_.NamingAttributeOf(dn);
  const LdbConnection::NamingAttribute after = connection_.NamingAttributeOf(to);
  if (!EqualsWithoutCase(before.attribute, after.attribute)) {
    return {kLdapNamingViolation,
            "the object is named by the attribute '" + before.attribute + "'"};
  }
  StoreStatus status = rules_.CheckValues(std::vector<Modification>{
      {Modification::Operation::kReplace, schema_.SpellingOf(after.attribute), {after.value}}});
  if (!status.Ok()) return status;
  const std::string key = NameKey(connection_.CanonicalName(dn));
  const std::string key_after = NameKey(connection_.CanonicalName(to));
  if (key == key_after) return {};
  if (LiesBelow(key_after, key)) {
    return {kLdapUnwillingToPerform, "an object cannot be moved below itself"};
  }
  Entry other;
  status = connection_.Read(connection_.ParentName(to), {}, other);
  if (!status.Ok()) return status;
  status = connection_.Read(to, {}, other);
  if (status.Ok()) return {kLdapAlreadyExists, "there is an object of this name: " + other.dn};
  return status.code == kLdapNoSuchObject ? StoreStatus{} : status;
}

StoreStatus LdbChanges::ReadTree(const std::string& dn, std::vector<std::string>& names) const {
  std::vector<Entry> entries;
  StoreStatus status = connection_.Search({.base = dn,
                                           .scope = SearchScope::kSubtree,
                                           .filter = kEveryObject,
                                           .attributes = {"objectClass"}},
                                          entries);
  names.clear();
  for (Entry& entry : entries) names.push_back(std::move(entry.dn));
  // A key ends with that of the object above it, so that it is longer.
  std::ranges::sort(names, {}, [](const std::string& name) { return NameKey(name).size(); });
  return status;
}

StoreStatus LdbChanges::Rename(const Entry& seen, const std::string& dn, Effect& effect) const {
  Entry now;
  StoreStatus status = connection_.Read(seen.dn, {}, now);
  if (status.Ok()) status = CheckSame(schema_, seen, now);
  if (status.Ok()) status = CheckNewName(now.dn, dn);
  std::vector<std::string> tree;
  if (status.Ok() && now.dn != dn) status = ReadTree(now.dn, tree);
  if (!status.Ok() || tree.empty()) return status;
  for (const std::string& name : tree) {
    status = Written(connection_.Rename(name, connection_.Rebased(name, now.dn, dn)), effect);
    if (!status.Ok()) return status;
  }
  status = WriteNames(dn, effect);
  return status.Ok() ? FollowName(now.dn, dn, effect) : status;
}

StoreStatus LdbChanges::WriteNames(const std::string& dn, Effect& effect) const {
  const LdbConnection::NamingAttribute naming = connection_.NamingAttributeOf(dn);
  return Written(connection_.Replace(dn, {{schema_.SpellingOf(naming.attribute), {naming.value}},
                                          {"name", {naming.value}}}),
                 effect);
}

StoreStatus LdbChanges::FollowName(const std::string& from, const std::string& to,
                                   Effect& effect) const {
  const std::vector<std::string> attributes = NameAttributes(schema_);
  if (attributes.empty()) return {};
  std::string filter = "(|";
  for (const std::string& name : attributes) filter += "(" + name + "=*)";
  std::vector<Entry> holders;
  StoreStatus status = connection_.Search({.base = {},
                                           .scope = SearchScope::kSubtree,
                                           .filter = filter + ")",
                                           .attributes = attributes},
                                          holders);
  const std::string key = NameKey(from);
  for (const Entry& holder : holders) {
    AttributeMap changed;
    for (const auto& [attribute, values] : holder.attributes) {
      AttributeValues after = values;
      for (std::string& value : after) {
        const std::string held = NameKey(value);
        const bool is_meant = held == key || LiesBelow(held, key);
        if (is_meant && connection_.IsName(value)) value = connection_.Rebased(value, from, to);
      }
      if (after != values) changed.emplace(attribute, std::move(after));
    }
    if (!status.Ok() || changed.empty()) continue;
    status = Written(connection_.Replace(holder.dn, changed), effect);
  }
  return status;
}

StoreStatus LdbChanges::Remove(const Entry& seen, IDirectoryStore::Extent extent,
                               Effect& effect) const {
  Entry now;
  StoreStatus status = connection_.Read(seen.dn, {}, now);
  if (status.Ok()) status = CheckSame(schema_, seen, now);
  if (status.Ok() && extent == IDirectoryStore::Extent::kAlone) status = CheckLeaf(now.dn);
  std::vector<std::string> tree;
  if (status.Ok()) status = ReadTree(now.dn, tree);
  // In whatever order: it is one step, and the library asks for none.
  for (const std::string& name : tree) {
    if (status.Ok()) status = Written(connection_.Delete(name), effect);
  }
  return status;
}

}  // namespace pelora::ldap
