// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/network/ldap_api.h"

namespace pelora::ldap {

/// What a server sent makes no sense (-4).
[[nodiscard]] StoreStatus Unreadable();

/// What the server says of a request as a whole: its result code and text. A message that is not of
/// the type `type`, or that cannot be read, is -4; no code of a server is negative. `page`, when
/// there is one, gets the mark at which the next page of a search begins, empty when there is none.
/// `referral`, when there is one, gets the addresses to which the server refers instead of doing
/// what it was asked for (10), none otherwise.
[[nodiscard]] StoreStatus OutcomeOf(LDAP* handle, LDAPMessage* result, int type,
                                    std::string* page = nullptr,
                                    std::vector<std::string>* referral = nullptr);

/// The entry that a message carries, with the attributes as the server names them. A message that
/// cannot be read, or in which a name holds a zero, is -4.
[[nodiscard]] StoreStatus EntryOf(LDAP* handle, LDAPMessage* message, Entry& entry);

/// How much there is of an entry: its names and values.
[[nodiscard]] std::size_t SizeOf(const Entry& entry);

}  // namespace pelora::ldap
