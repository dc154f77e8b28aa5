// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "hosts/ldap/directory_store.h"

namespace pelora::ldap {

struct LdbStoreOptions {
  /// How long a request waits for another process that has the file locked.
  std::chrono::milliseconds lock_wait{3000};
  /// Whether the file is mapped into memory, which is less work for who changes much of it. When
  /// somebody cuts a mapped file short, the process gets SIGBUS: for programs that can end then.
  bool is_mapped = false;
};

/// Opens the embedded directory in the file `path`, as `CreateLdbDirectory` makes it. Samba's ldb
/// tools read and write the same file, also while it is open here.
///
/// The schema is read once. A modify is checked as a directory server would, before anything is
/// written: unknown attribute 16, more than one value for a single-valued attribute or a value out
/// of its range 19, a value twice 20, an empty value or one that the syntax does not allow 21, a
/// malformed name 34, the naming attribute 67. It is one transaction: on disk when it returns, or
/// not at all.
///
/// Failures to open leave `store` empty and the file as it was: there is none, it may not be read
/// and written, it is no directory, it is damaged (all -1), or it is locked (51). `text` is one
/// line that names the file, and the process that holds the lock. The same holds for later
/// requests; when the file has been removed or replaced meanwhile they are refused (52).
///
/// Each store is used on one thread. Stores of one file may be used at the same time, on several
/// threads: their requests wait for one another, and so do opening and closing.
///
/// A search hands over its first entries before it looks for the others, and begins anew for those:
/// an object that another program renames or moves between the two may be given under both names,
/// as by a server that gives its entries page by page.
///
/// A file that asks for modules of the database library to be loaded (`@MODULES`) is refused, and
/// none is loaded.
[[nodiscard]] StoreStatus OpenLdbStore(const std::string& path, const LdbStoreOptions& options,
                                       std::unique_ptr<IDirectoryStore>& store);

}  // namespace pelora::ldap
