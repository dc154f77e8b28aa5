// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/find/object_search.h"

#include <algorithm>
#include <utility>

#include "hosts/ldap/entry_values.h"
#include "hosts/session/find/entry_finder.h"
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

ListingEnd FindObjects(ldap::IDirectoryStore& store, const ObjectQuery& query,
                       const FoundSink& sink) {
  std::vector<std::string> attributes = ObjectAttributes();
  attributes.insert(attributes.end(), {"sAMAccountName", "mail"});
  EntryFinder finder(store, {.base = query.base,
                             .text = query.text,
                             .filter = query.filter,
                             .advanced = true,
                             .attributes = std::move(attributes)});
  std::size_t count = 0;
  bool has_more = false;
  ldap::StoreStatus status = finder.Begin();
  if (status.Ok()) {
    status = finder.Find([&](const ldap::Entry& entry) {
      has_more = count == query.limit;
      if (has_more) return false;
      ++count;
      return sink(FoundObjectOf(entry));
    });
  }
  return finder.EndBy(status, has_more);
}

ListingEnd FindObjectsBelow(ldap::IDirectoryStore& store, std::span<const std::string> bases,
                            ObjectQuery query, const FoundSink& sink) {
  ListingEnd all;
  bool is_wanted = true;
  const FoundSink counted = [&](FoundObject found) {
    --query.limit;
    is_wanted = sink(std::move(found));
    return is_wanted;
  };
  for (std::size_t at = 0; at < bases.size() && is_wanted; ++at) {
    query.base = bases[at];
    ListingEnd end = FindObjects(store, ObjectQuery(query), counted);
    if (at > 0) {
      std::erase_if(end.not_found, [&all](const std::string& name) {
        return std::ranges::find(all.not_found, name) == all.not_found.end();
      });
    }
    all = std::move(end);
    if (all.end.reason != SearchEnd::Reason::kComplete) break;
  }
  return all;
}

}  // namespace pelora::session
