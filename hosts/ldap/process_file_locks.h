// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <memory>
#include <mutex>

namespace pelora::ldap {

/// A file, whatever it is called.
struct FileIdentity {
  dev_t device = 0;
  ino_t inode = 0;

  friend auto operator<=>(const FileIdentity&, const FileIdentity&) = default;
};

/// What the threads of this process share for a file, as the database library does.
struct ProcessFileLock {
  /// Locks that the system keeps for files tell processes from one another, and not the threads of
  /// one.
  std::mutex mutex;
  /// Looked at with the mutex held. The library could not end a transaction, and goes on as within
  /// it until nobody in this process has the file open.
  bool is_stuck = false;
};

/// That of a file: one for each, whoever opens the file and under whatever name.
///
/// The file stays open as long as its lock is kept, or another one could take its identity.
[[nodiscard]] std::shared_ptr<ProcessFileLock> ProcessLockOf(const FileIdentity& file);

}  // namespace pelora::ldap
