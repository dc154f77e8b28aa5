// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/typed/address_owner.h"

#include <algorithm>

#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/name_key.h"
#include "hosts/session/search_filter.h"

namespace pelora::session {

std::optional<DirectoryObject> FindAddressOwner(ldap::IDirectoryStore& store,
                                                std::string_view address,
                                                std::span<const std::string> except) {
  ldap::Entry root;
  if (!store.ReadRoot(root).Ok()) return std::nullopt;
  const std::string value = "=" + EscapeFilterValue(address) + ")";
  const auto is_excepted = [except](const std::string& dn) {
    return std::ranges::any_of(except, [key = ldap::NameKey(dn)](const std::string& known) {
      return ldap::NameKey(known) == key;
    });
  };
  std::optional<DirectoryObject> owner;
  const ldap::StoreStatus status =
      store.Search({.base = ldap::FirstValue(root, "defaultNamingContext"),
                    .scope = ldap::SearchScope::kSubtree,
                    .filter = "(|(mail" + value + "(otherMailbox" + value + ")",
                    .attributes = {"objectClass", "name", "description"}},
                   [&](const ldap::Entry& entry) {
                     if (!is_excepted(entry.dn)) owner = ObjectOf(entry);
                     return !owner;
                   });
  return status.Ok() ? owner : std::nullopt;
}

}  // namespace pelora::session
