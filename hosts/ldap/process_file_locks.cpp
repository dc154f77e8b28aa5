// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/process_file_locks.h"

#include <map>

namespace pelora::ldap {
namespace {

struct Locks {
  std::mutex mutex;
  std::map<FileIdentity, std::weak_ptr<ProcessFileLock>> of_files;
};

/// One table for the process, for that is what the system's locks of files belong to.
Locks& ProcessLocks() {
  static Locks locks;
  return locks;
}

}  // namespace

std::shared_ptr<ProcessFileLock> ProcessLockOf(const FileIdentity& file) {
  Locks& locks = ProcessLocks();
  const std::lock_guard guard(locks.mutex);
  std::erase_if(locks.of_files, [](const auto& row) { return row.second.expired(); });
  std::weak_ptr<ProcessFileLock>& known = locks.of_files[file];
  std::shared_ptr<ProcessFileLock> lock = known.lock();
  if (lock == nullptr) known = lock = std::make_shared<ProcessFileLock>();
  return lock;
}

}  // namespace pelora::ldap
