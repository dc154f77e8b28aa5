// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/network/ldap_api.h"

namespace pelora::ldap {

/// What the server says of a request as a whole: its result code and text. `page`, when there is
/// one, gets the mark at which the next page of a search begins, empty when there is none.
[[nodiscard]] StoreStatus OutcomeOf(LDAP* handle, LDAPMessage* result, std::string* page = nullptr);

/// The entry that a message carries, with the attributes as the server names them. A message that
/// cannot be read is -4.
[[nodiscard]] StoreStatus EntryOf(LDAP* handle, LDAPMessage* message, Entry& entry);

/// The entries in an answer that came whole.
[[nodiscard]] StoreStatus EntriesOf(LDAP* handle, LDAPMessage* answer, std::vector<Entry>& entries);

}  // namespace pelora::ldap
