// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "hosts/ldap/directory_store.h"

namespace pelora::session {

// A user is in one group by a number of his own, and is not among the members that the group itself
// has: it cannot be left as the others can.

/// The primary group of an object; empty when it has none, or the directory says nothing of it.
[[nodiscard]] std::string PrimaryGroupOf(ldap::IDirectoryStore& store, const std::string& dn);

/// Whether the group of this security identifier is anybody's primary one. Not, where that cannot
/// be read.
[[nodiscard]] bool IsSomebodysPrimaryGroup(ldap::IDirectoryStore& store, const std::string& sid);

}  // namespace pelora::session
