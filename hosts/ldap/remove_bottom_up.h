// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "hosts/ldap/directory_store.h"

namespace pelora::ldap {

/// Puts objects that lie below others in front of them.
void SortBottomUp(std::vector<Entry>& entries);

/// Deletes an object and all that lies below it, one by one from the bottom up: `remove` deletes
/// the object of a name. The first failure ends it; the text says how much was deleted by then.
StoreStatus RemoveBottomUp(IDirectoryStore& store, const std::string& dn,
                           const std::function<StoreStatus(const std::string& dn)>& remove);

}  // namespace pelora::ldap
