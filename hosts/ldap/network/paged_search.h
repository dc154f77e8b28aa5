// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/network/ldap_connection.h"

namespace pelora::ldap {

/// Searches page by page, since servers end a search that is not paged after a thousand entries,
/// and hands over each entry as it arrives. References to other servers are passed over.
///
/// A search without an end is given up at the connection's limits (4), and the text says so.
///
/// What was found before a failure has been handed over; `count`, which the caller sets to 0, says
/// how much that is.
[[nodiscard]] StoreStatus SearchInPages(LdapConnection& connection, const SearchRequest& request,
                                        const EntrySink& sink, std::size_t& count);

}  // namespace pelora::ldap
