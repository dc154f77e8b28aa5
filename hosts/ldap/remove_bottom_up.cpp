// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/remove_bottom_up.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/name_key.h"

namespace pelora::ldap {

void SortBottomUp(std::vector<Entry>& entries) {
  // A key ends with that of the object above it, so that it is longer.
  std::ranges::stable_sort(entries, std::greater(),
                           [](const Entry& entry) { return NameKey(entry.dn).size(); });
}

StoreStatus RemoveBottomUp(const std::string& dn, const SearchThere& search,
                           const std::function<StoreStatus(const std::string& dn)>& remove) {
  std::vector<Entry> entries;
  StoreStatus status =
      search({.base = dn, .scope = SearchScope::kSubtree, .attributes = {"objectClass"}},
             [&entries](Entry entry) {
               entries.push_back(std::move(entry));
               return true;
             });
  SortBottomUp(entries);
  std::size_t gone = 0;
  for (const Entry& entry : entries) {
    if (status.Ok()) status = remove(entry.dn);
    // Somebody else has deleted it meanwhile.
    if (status.code == kLdapNoSuchObject && entry.dn != dn) status = {};
    if (!status.Ok()) break;
    ++gone;
  }
  if (!status.Ok() && gone > 0) {
    status.text = std::to_string(gone) + " of " + std::to_string(entries.size()) +
                  " objects were deleted before: " + status.text;
  }
  return status;
}

}  // namespace pelora::ldap
