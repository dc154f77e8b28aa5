// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/ldap/directory_store.h"

namespace pelora::session {

/// Whether the directory keeps deleted objects whole for a while, so that they can be brought back:
/// the recycle bin of a domain is on. Once it is, it cannot be switched off. A directory in a file
/// has none, and neither has a Samba domain one that gives anything back.
ldap::StoreStatus ReadKeepsDeleted(ldap::IDirectoryStore& store, bool& keeps);

}  // namespace pelora::session
