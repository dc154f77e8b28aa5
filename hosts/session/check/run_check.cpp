// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/check/run_check.h"

#include <algorithm>
#include <utility>

#include "hosts/ldap/entry_values.h"
#include "hosts/session/check/check_notes.h"
#include "hosts/session/check/checked_object.h"
#include "hosts/session/object_class.h"

namespace pelora::session {
namespace {

using Rules = std::vector<const CheckRule*>;

/// The rules asked for, each once, in the order of the table.
Rules RulesOf(const CheckRequest& request) {
  Rules rules;
  for (const CheckRule& rule : CheckRules()) {
    const bool is_wanted =
        request.rules.empty() || std::ranges::find(request.rules, &rule) != request.rules.end();
    if (is_wanted) rules.push_back(&rule);
  }
  return rules;
}

std::vector<std::string> AttributesOf(const Rules& rules, const CheckFields& fields) {
  std::vector<std::string> attributes = {"objectClass"};
  for (const CheckRule* rule : rules) {
    for (std::string& name : AttributesOf(*rule, fields)) {
      if (std::ranges::find(attributes, name) == attributes.end()) {
        attributes.push_back(std::move(name));
      }
    }
  }
  return attributes;
}

std::string ClassFilter(const CheckFields& fields) {
  std::string filter = "(|";
  for (const std::string& name : fields.Classes()) filter += "(objectClass=" + name + ")";
  return filter + ")";
}

ldap::StoreStatus ReadServers(ldap::IDirectoryStore& store, const std::string& whole_directory,
                              CheckNotes& notes) {
  const ldap::SearchRequest request = {
      .base = whole_directory,
      .scope = ldap::SearchScope::kSubtree,
      .filter = "(&(objectClass=computer)(peloraAccount=*)(!(peloraAccount=0)))",
      .attributes = {"cn"}};
  return store.Search(request, [&notes](const ldap::Entry& server) {
    notes.IsServer(ldap::FirstValue(server, "cn"));
    return true;
  });
}

ldap::StoreStatus ReadObjects(ldap::IDirectoryStore& store, const std::string& base,
                              const Rules& rules, const CheckFields& fields, CheckNotes& notes) {
  const bool looks_up = std::ranges::any_of(rules, &CheckRule::looks_up_objects);
  const ldap::SearchRequest request = {.base = base,
                                       .scope = ldap::SearchScope::kSubtree,
                                       .filter = ClassFilter(fields),
                                       .attributes = AttributesOf(rules, fields)};
  return store.Search(request, [&](const ldap::Entry& entry) {
    if (looks_up) notes.IsThere(entry);
    const std::string class_name = KindOf(ldap::ValuesOf(entry, "objectClass")).class_name;
    if (!fields.HasTabs(class_name)) return true;
    const CheckedObject object(store, entry, class_name, fields);
    for (const CheckRule* rule : rules) {
      notes.Begin(*rule, object);
      rule->look(object, notes);
    }
    return true;
  });
}

}  // namespace

ldap::StoreStatus RunCheck(ldap::IDirectoryStore& store, const CheckRequest& request,
                           const CheckFields& fields, const FindingSink& sink) {
  const Rules rules = RulesOf(request);
  ldap::Entry root;
  if (ldap::StoreStatus status = store.ReadRoot(root); !status.Ok()) return status;
  const std::string whole_directory = ldap::FirstValue(root, "defaultNamingContext");

  CheckNotes notes;
  if (std::ranges::any_of(rules, &CheckRule::looks_up_servers)) {
    const ldap::StoreStatus status = ReadServers(store, whole_directory, notes);
    if (!status.Ok()) return status;
  }
  const std::string& base = request.base.empty() ? whole_directory : request.base;
  ldap::StoreStatus status = ReadObjects(store, base, rules, fields, notes);
  if (status.Ok()) status = notes.LookUpNames(store);
  if (status.Ok()) notes.Report(sink);
  return status;
}

}  // namespace pelora::session
