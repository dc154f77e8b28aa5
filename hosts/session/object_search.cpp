// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/object_search.h"

#include <utility>

#include "hosts/ldap/entry_values.h"
#include "hosts/session/folder_name.h"

namespace pelora::session {
namespace {

FoundObject FoundObjectOf(const ldap::Entry& entry) {
  FoundObject found{.object = ObjectOf(entry),
                    .logon_name = ldap::FirstValue(entry, "sAMAccountName"),
                    .mail = ldap::FirstValue(entry, "mail"),
                    .folder = {}};
  // A domain's name says where it is.
  if (found.object.kind.icon != ObjectIcon::kDomain) found.folder = FolderOf(entry.dn);
  return found;
}

}  // namespace

SearchEnd FindObjects(ldap::IDirectoryStore& store, const ObjectQuery& query,
                      const FoundSink& sink) {
  std::string base = query.base;
  if (base.empty()) {
    ldap::Entry root;
    if (const ldap::StoreStatus status = store.ReadRoot(root); !status.Ok()) return EndOf(status);
    base = ldap::FirstValue(root, "defaultNamingContext");
  }
  std::size_t count = 0;
  bool has_more = false;
  const auto take = [&](const ldap::Entry& entry) {
    FoundObject found = FoundObjectOf(entry);
    if (found.object.kind.is_internal) return true;
    has_more = count == query.limit;
    if (has_more) return false;
    ++count;
    return sink(std::move(found));
  };
  std::vector<std::string> attributes = ObjectAttributes();
  attributes.insert(attributes.end(), {"sAMAccountName", "mail"});
  const ldap::StoreStatus status = store.Search({.base = base,
                                                 .scope = ldap::SearchScope::kSubtree,
                                                 .filter = query.filter,
                                                 .attributes = std::move(attributes)},
                                                take);
  return has_more ? SearchEnd{.reason = SearchEnd::Reason::kOwnLimit} : EndOf(status);
}

}  // namespace pelora::session
