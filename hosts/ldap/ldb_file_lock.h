// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/file_descriptor.h"
#include "hosts/ldap/process_file_locks.h"

namespace pelora::ldap {

/// Takes the locks of a database file before the database library does, which would wait for them
/// for ever: here the wait has an end, and the text says who holds the lock.
///
/// Locks belong to the process, so that the library finds what it needs already granted; what it
/// gives back it gives back for both. For the same reason closing any descriptor of the file would
/// drop them: this one stays open as long as the database is, and whoever closes another one does
/// it within a hold. Threads of the process keep each other out by one more lock, whichever of them
/// opened the file; a thread holds it once.
class LdbFileLock {
 public:
  enum class Purpose : std::uint8_t {
    /// Opening the database and looking through it.
    kOpen,
    kRead,
    /// A whole transaction.
    kWrite,
  };

  /// Gives the locks back.
  class Hold {
   public:
    Hold() = default;
    explicit Hold(const LdbFileLock& lock) : within_(lock.in_process_->mutex), lock_(&lock) {}
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;
    Hold(Hold&& other) noexcept
        : within_(std::move(other.within_)), lock_(std::exchange(other.lock_, nullptr)) {}
    Hold& operator=(Hold&& other) noexcept {
      std::swap(within_, other.within_);
      std::swap(lock_, other.lock_);
      return *this;
    }
    ~Hold() {
      if (lock_ != nullptr) lock_->Release();
    }

   private:
    std::unique_lock<std::mutex> within_;
    const LdbFileLock* lock_ = nullptr;
  };

  /// Opens an existing regular file for reading and writing; -1 with a text that names it
  /// otherwise.
  static StoreStatus Open(const std::string& path, std::chrono::milliseconds wait,
                          std::unique_ptr<LdbFileLock>& lock);
  ~LdbFileLock();
  LdbFileLock(const LdbFileLock&) = delete;
  LdbFileLock& operator=(const LdbFileLock&) = delete;

  /// The open file itself, and the name under which the database library opens this very file,
  /// whatever has become of its path.
  [[nodiscard]] int descriptor() const { return file_.get(); }
  [[nodiscard]] std::string LibraryPath() const;

  /// Waits for other threads, and then for the locks that `purpose` needs: 51 when another process
  /// still holds one at the end, 52 when the file is no longer the one that was opened, or the
  /// library is stuck in it. `hold` is empty when it is called, and this thread has no other one.
  StoreStatus Acquire(Purpose purpose, Hold& hold) const;
  /// Takes, within a hold for it, the locks again that the library has given back.
  StoreStatus AcquireAnew(Purpose purpose) const;
  /// Keeps the other threads out alone: for closing the database.
  [[nodiscard]] std::unique_lock<std::mutex> KeepThreadsOut() const {
    return std::unique_lock(in_process_->mutex);
  }
  /// Within a hold: the library is left in the middle of a transaction that it could not end. What
  /// it says of the file is its own view of it from now on: nobody in this process gets a hold any
  /// more until all have closed the file.
  void GiveUpFile() const { in_process_->is_stuck = true; }
  /// With the other threads kept out: closing the database may write into the file.
  [[nodiscard]] bool IsFileGivenUp() const { return in_process_->is_stuck; }
  /// Makes sure, within a hold for writing, that no reader came in since: the library lets readers
  /// in while it gathers what it will write.
  StoreStatus KeepReadersOut() const;

 private:
  struct Range;

  LdbFileLock(std::string path, FileDescriptor file, std::shared_ptr<ProcessFileLock> in_process,
              std::chrono::milliseconds wait);
  [[nodiscard]] StoreStatus WaitFor(const Range& range) const;
  [[nodiscard]] StoreStatus CheckIdentity() const;
  [[nodiscard]] std::string DescribeHolder(const Range& range) const;
  void Release() const;

  std::string path_;
  FileDescriptor file_;
  std::shared_ptr<ProcessFileLock> in_process_;
  std::chrono::milliseconds wait_;
};

}  // namespace pelora::ldap
