// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "hosts/changes/change.h"
#include "hosts/ldap/directory_store.h"

namespace pelora::session {

/// What is read of an object to say later which one was meant: what nobody changes as long as it
/// lives. A directory in a file gives no numbers; there the object's classes and its logon name
/// have to do.
[[nodiscard]] const std::vector<std::string>& IdentityAttributes();

/// What of that a reading brought, as the guard of a change.
[[nodiscard]] std::vector<changes::ValueChange> IdentityOf(const ldap::Entry& read);

/// The change that gives an object, of which `IdentityAttributes` were read, another name in its
/// container.
[[nodiscard]] changes::Change RenamingOf(const ldap::Entry& read, std::string_view name);

/// The change that puts it into another container.
[[nodiscard]] changes::Change MovingOf(const ldap::Entry& read, std::string_view container);

/// The change that deletes it. `below` is what was read of the objects below it, which go with it.
[[nodiscard]] changes::Change RemovalOf(const ldap::Entry& read,
                                        const std::vector<ldap::Entry>& below, bool is_kept);

}  // namespace pelora::session
