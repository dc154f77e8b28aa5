// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/ldb_changes.h"

#include <string>
#include <utility>
#include <vector>

#include "hosts/ldap/as_made.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/ldb_message.h"
#include "hosts/ldap/new_entry.h"

namespace pelora::ldap {

LdbChanges::LdbChanges(const LdbConnection& connection, const Schema& schema, const Entry& root)
    : connection_(connection),
      schema_(schema),
      root_(root),
      rules_(schema_, [this](const std::string& name) { return connection_.IsName(name); }) {}

StoreStatus LdbChanges::Modify(const std::string& dn, std::span<const Modification> modifications,
                               ModifyWay way, Effect& effect) const {
  std::vector<std::string> names;
  for (const Modification& change : modifications) names.push_back(change.attribute);
  LdbRecord now;
  StoreStatus status = connection_.ReadRecord(dn, names, now);
  return status.Ok() ? ModifyKnown(*now, modifications, way, effect) : status;
}

StoreStatus LdbChanges::ModifyKnown(const ldb_message& known,
                                    std::span<const Modification> modifications, ModifyWay way,
                                    Effect& effect) const {
  AttributeMap changed;
  StoreStatus status = rules_.Apply(ToEntry(known, modifications), modifications, changed, way);
  if (!status.Ok() || changed.empty()) return status;
  return Written(connection_.Replace(known, changed), effect);
}

StoreStatus LdbChanges::Add(Entry entry, Effect& effect) const {
  Entry parent;
  StoreStatus status = connection_.Read(connection_.ParentName(entry.dn), {}, parent);
  CompleteClasses(entry);
  if (status.Ok()) status = CompleteNewEntry(connection_, schema_, entry);
  if (status.Ok()) status = rules_.CheckNew(entry);
  if (status.Ok()) status = CheckAccountName(entry);
  if (!status.Ok()) return status;
  return Written(connection_.Add(entry), effect);
}

void LdbChanges::CompleteNew(Entry& entry) const {
  if (!connection_.IsName(entry.dn)) return;
  Entry completed = entry;
  CompleteClasses(completed);
  if (CompleteNewEntry(connection_, schema_, completed).Ok()) entry = std::move(completed);
}

StoreStatus LdbChanges::Delete(const Entry& made, Effect& effect) const {
  Entry now;
  StoreStatus status = connection_.Read(made.dn, {}, now);
  if (status.Ok()) status = CheckKept(schema_, made, now);
  if (status.Ok()) {
    status = CheckNothingNew(made, now, connection_.NamingAttributeOf(made.dn).attribute);
  }
  if (status.Ok()) status = CheckLeaf(made.dn);
  if (!status.Ok()) return status;
  return Written(connection_.Delete(made.dn), effect);
}

StoreStatus LdbChanges::CheckAccountName(const Entry& entry) const {
  const std::string name = FirstValue(entry, "sAMAccountName");
  const std::string base = FirstValue(root_, "defaultNamingContext");
  if (name.empty() || base.empty()) return {};
  std::vector<Entry> others;
  StoreStatus status =
      connection_.Search({.base = base,
                          .scope = SearchScope::kSubtree,
                          .filter = "(sAMAccountName=" + connection_.FilterValue(name) + ")",
                          .attributes = {"sAMAccountName"}},
                         others);
  if (status.Ok() && !others.empty()) {
    return {kLdapAlreadyExists, "the account name is in use by " + others.front().dn};
  }
  return status;
}

StoreStatus LdbChanges::CheckLeaf(const std::string& dn) const {
  std::vector<Entry> children;
  StoreStatus status = connection_.Search({.base = dn,
                                           .scope = SearchScope::kOneLevel,
                                           .filter = "(distinguishedName=*)",
                                           .attributes = {"objectClass"}},
                                          children);
  if (status.Ok() && !children.empty()) {
    return {kLdapNotAllowedOnNonLeaf, "other objects lie below it"};
  }
  return status;
}

StoreStatus LdbChanges::Written(StoreStatus status, Effect& effect) {
  (status.Ok() ? effect.has_changes : effect.is_damaged) = true;
  return status;
}

}  // namespace pelora::ldap
