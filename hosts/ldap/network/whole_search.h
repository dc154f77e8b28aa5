// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/network/ldap_connection.h"

namespace pelora::ldap {

/// Searches to the end, however much there is, and hands over each entry as it arrives, once.
/// References to other servers are passed over.
///
/// All is asked for in one request: some servers look each object of a page up once more, which
/// takes them several times as long. A server that gives no more than so many at a time says so; it
/// is then asked page by page, and so it is from then on, as long as the connection lives.
///
/// A search without an end is given up at the connection's limits (4), and the text says so.
///
/// A search that is given up in the middle is let go of, but some servers work it off before they
/// answer what comes next over the connection: who has others waiting searches over one of its own.
///
/// What was found before a failure has been handed over; `count`, which the caller sets to 0, says
/// how much that is.
[[nodiscard]] StoreStatus SearchWhole(LdapConnection& connection, const SearchRequest& request,
                                      const EntrySink& sink, std::size_t& count);

}  // namespace pelora::ldap
