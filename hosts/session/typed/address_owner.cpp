// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/typed/address_owner.h"

#include <algorithm>

#include "hosts/ldap/case_fold.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/name_key.h"
#include "hosts/session/search_filter.h"

namespace pelora::session {
namespace {

/// So many addresses are asked for in one search.
constexpr std::size_t kAtOnce = 40;

/// The objects that have an address, as the inside of a filter.
std::string FilterOf(std::string_view address) {
  const std::string value = "=" + EscapeFilterValue(address) + ")";
  return "(mail" + value + "(otherMailbox" + value;
}

}  // namespace

std::optional<DirectoryObject> FindAddressOwner(ldap::IDirectoryStore& store,
                                                std::string_view address,
                                                std::span<const std::string> except) {
  ldap::Entry root;
  if (!store.ReadRoot(root).Ok()) return std::nullopt;
  const auto is_excepted = [except](const std::string& dn) {
    return std::ranges::any_of(except, [key = ldap::NameKey(dn)](const std::string& known) {
      return ldap::NameKey(known) == key;
    });
  };
  std::optional<DirectoryObject> owner;
  const ldap::StoreStatus status =
      store.Search({.base = ldap::FirstValue(root, "defaultNamingContext"),
                    .scope = ldap::SearchScope::kSubtree,
                    .filter = "(|" + FilterOf(address) + ")",
                    .attributes = {"objectClass", "name", "description"}},
                   [&](const ldap::Entry& entry) {
                     if (!is_excepted(entry.dn)) owner = ObjectOf(entry);
                     return !owner;
                   });
  return status.Ok() ? owner : std::nullopt;
}

Judgement JudgeOwner(const DirectoryObject& owner) {
  return {.verdict = Verdict::kOdd, .sentence = "This is an address of " + owner.name + "."};
}

AddressOwners FindAddressOwners(ldap::IDirectoryStore& store,
                                std::span<const std::string> addresses) {
  AddressOwners owners;
  ldap::Entry root;
  if (!store.ReadRoot(root).Ok()) return owners;
  for (const std::string& address : addresses) owners[ldap::FoldCase(address)];
  while (!addresses.empty()) {
    const auto part = addresses.first(std::min(kAtOnce, addresses.size()));
    addresses = addresses.subspan(part.size());
    std::string filter = "(|";
    for (const std::string& address : part) filter += FilterOf(address);
    const ldap::StoreStatus status =
        store.Search({.base = ldap::FirstValue(root, "defaultNamingContext"),
                      .scope = ldap::SearchScope::kSubtree,
                      .filter = filter + ")",
                      .attributes = {"objectClass", "name", "description", "mail", "otherMailbox"}},
                     [&](const ldap::Entry& entry) {
                       for (const char* const attribute : {"mail", "otherMailbox"}) {
                         for (const std::string& value : ldap::ValuesOf(entry, attribute)) {
                           const auto known = owners.find(ldap::FoldCase(value));
                           if (known != owners.end()) known->second.push_back(ObjectOf(entry));
                         }
                       }
                       return true;
                     });
    if (!status.Ok()) break;
  }
  return owners;
}

}  // namespace pelora::session
