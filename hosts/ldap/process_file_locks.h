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

/// The lock that the threads of this process share for a file: one for each, whoever opens the file
/// and under whatever name. Locks that the system keeps for files tell processes from one another,
/// and not the threads of one.
///
/// The file stays open as long as its lock is kept, or another one could take its identity.
[[nodiscard]] std::shared_ptr<std::mutex> ProcessLockOf(const FileIdentity& file);

}  // namespace pelora::ldap
