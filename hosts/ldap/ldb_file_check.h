// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/ldb_file_lock.h"

namespace pelora::ldap {

/// Looks through a database file before libldb is let at it, which trusts what it finds and adds
/// records of its own to a database that is not one of its own.
///
/// A file of another kind, a damaged one, a database of another program and one that names modules
/// are -1, with a line that says which. A commit that a crash cut short is completed or undone;
/// nothing else is changed. A file that this process has open already is taken to be sound.
///
/// `lock` is not held when it is called; it is taken for opening meanwhile.
[[nodiscard]] StoreStatus CheckLdbFile(const std::string& path, const LdbFileLock& lock);

/// The refusal of a file that names modules, which are programs of somebody else's.
[[nodiscard]] StoreStatus RefuseModules(const std::string& path);

}  // namespace pelora::ldap
