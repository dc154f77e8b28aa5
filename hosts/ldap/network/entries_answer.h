// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "hosts/ldap/network/pending_request.h"

namespace pelora::ldap {

/// Takes the entries of an answer one by one; false: no more of them are wanted, and the request is
/// let go of.
using AnswerSink = std::function<StoreStatus(Entry entry, bool& goes_on)>;

/// Takes the answer to a search, message by message, to its end. References to other servers are
/// passed over.
///
/// The status is what went wrong on this side, or with an entry (what `take` returned). What the
/// server says of the search as a whole goes to `outcome`. A message that belongs to no answer to a
/// search, and references without an end, are -4. `page` is as with `OutcomeOf`.
[[nodiscard]] StoreStatus TakeEntries(LdapConnection& connection, PendingRequest& request,
                                      const AnswerSink& take, StoreStatus& outcome,
                                      std::string* page = nullptr);

/// The same where `most` entries were asked for at most: one more is -4.
[[nodiscard]] StoreStatus TakeEntries(LdapConnection& connection, PendingRequest& request,
                                      std::size_t most, std::vector<Entry>& entries,
                                      StoreStatus& outcome);

}  // namespace pelora::ldap
