// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "hosts/ldap/directory_store.h"

namespace pelora::ldap {

/// Puts objects that lie below others in front of them.
void SortBottomUp(std::vector<Entry>& entries);

/// What is searched where objects are deleted.
using SearchThere = std::function<StoreStatus(const SearchRequest& request, const EntrySink& sink)>;

/// Deletes an object and all that lies below it, one by one from the bottom up: `search` finds what
/// there is, and `remove` deletes the object of a name. The first failure ends it; the text says
/// how much was deleted by then.
StoreStatus RemoveBottomUp(const std::string& dn, const SearchThere& search,
                           const std::function<StoreStatus(const std::string& dn)>& remove);

}  // namespace pelora::ldap
