// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/own_pages/listed_members.h"

#include <array>
#include <utility>

#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/name_key.h"
#include "hosts/session/folder_name.h"
#include "hosts/session/own_pages/primary_group.h"
#include "hosts/session/search_filter.h"

namespace pelora::session {
namespace {

constexpr const char* kMember = "member";
constexpr const char* kSid = "objectSid";

}  // namespace

ListedMembers ReadMembersOf(ldap::IDirectoryStore& store, const std::string& group) {
  ListedMembers listed;
  const std::array<std::string, 2> asked = {kMember, kSid};
  ldap::Entry entry;
  listed.status = store.Read(group, asked, entry);
  if (!listed.status.Ok()) return listed;
  listed.names = ldap::ValuesOf(entry, kMember);
  if (IsSomebodysPrimaryGroup(store, ldap::FirstValue(entry, kSid))) {
    listed.note = "Whoever has this for the primary group is in it too, and is not listed here.";
  }
  return listed;
}

ListedMembers ReadGroupsOf(ldap::IDirectoryStore& store, const std::string& dn) {
  ListedMembers listed;
  ldap::Entry root;
  listed.status = store.ReadRoot(root);
  if (!listed.status.Ok()) return listed;
  const ldap::SearchRequest request{
      .base = ldap::FirstValue(root, "defaultNamingContext"),
      .scope = ldap::SearchScope::kSubtree,
      .filter = "(&(objectClass=group)(member=" + EscapeFilterValue(dn) + "))",
      .attributes = {"cn"}};
  listed.status = store.Search(request, [&listed](ldap::Entry group) {
    listed.names.push_back(std::move(group.dn));
    return true;
  });
  const std::string primary = listed.status.Ok() ? PrimaryGroupOf(store, dn) : std::string();
  if (primary.empty()) return listed;
  listed.note = "The primary group is " + OwnNameOf(primary) + ". It cannot be left here.";
  std::erase_if(listed.names, [key = ldap::NameKey(primary)](const std::string& name) {
    return ldap::NameKey(name) == key;
  });
  return listed;
}

}  // namespace pelora::session
