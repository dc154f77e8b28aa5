// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <mutex>

namespace pelora::ldap {

/// Taken while a database is opened or closed, whichever file that is: the database libraries keep
/// lists of what the process has open, and do not guard them. Whoever needs a file's own lock too
/// takes that one first.
[[nodiscard]] std::unique_lock<std::mutex> LockLdbLibrary();

/// Before the first context is made, with the lock taken.
void PrepareLdbLibrary();

}  // namespace pelora::ldap
