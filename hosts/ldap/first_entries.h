// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

#include "hosts/ldap/directory_store.h"

namespace pelora::ldap {

/// Searches and hands over each entry as it is found, until `take` answers false, which is no
/// failure.
using SearchOnce = std::function<StoreStatus(const std::function<bool(Entry entry)>& take)>;

/// Searches by `search` so that whoever waits for many entries has the first of them early: those
/// are handed over before a second search looks for the others. Where they are all there are, or
/// are long in coming, there is one search. The sink is called between the searches, never within
/// one, and ends it all by false; what a search that fails had found is not handed over.
[[nodiscard]] StoreStatus HandOverFirstEntriesEarly(const SearchOnce& search,
                                                    const EntrySink& sink);

}  // namespace pelora::ldap
