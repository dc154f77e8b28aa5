// SPDX-License-Identifier: Apache-2.0
#include "tests/harness/unwritable_disk.h"

#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>

namespace {

struct WatchedDisk {
  // Several threads write.
  std::atomic<bool> is_watched = false;
  std::atomic<std::size_t> writes_left = 0;
  std::atomic<std::size_t> count = 0;

  bool Takes() { return !is_watched || count++ < writes_left; }
};

WatchedDisk watched_disk;

struct WatchedSyncs {
  std::atomic<bool> are_watched = false;
  std::atomic<std::size_t> failing = 0;
  std::atomic<std::size_t> count = 0;

  bool Fails() { return are_watched && ++count == failing; }
};

WatchedSyncs watched_syncs;

int Sync(int file, long call) {
  if (!watched_syncs.Fails()) return static_cast<int>(syscall(call, file));
  errno = EIO;
  return -1;
}

ssize_t RefuseToWrite() {
  errno = EROFS;
  return -1;
}

}  // namespace

extern "C" ssize_t pwrite(int file, const void* bytes, size_t size, off_t place) {
  return watched_disk.Takes() ? syscall(SYS_pwrite64, file, bytes, size, place) : RefuseToWrite();
}

extern "C" int ftruncate(int file, off_t size) noexcept {
  return static_cast<int>(watched_disk.Takes() ? syscall(SYS_ftruncate, file, size)
                                               : RefuseToWrite());
}

extern "C" int fsync(int file) { return Sync(file, SYS_fsync); }
extern "C" int fdatasync(int file) { return Sync(file, SYS_fdatasync); }

namespace pelora::testing {

UnwritableDisk::UnwritableDisk(std::size_t writes_left) {
  watched_disk.count = 0;
  watched_disk.writes_left = writes_left;
  watched_disk.is_watched = true;
}

UnwritableDisk::~UnwritableDisk() { watched_disk.is_watched = false; }

std::size_t UnwritableDisk::count() { return watched_disk.count; }

UnsafeDisk::UnsafeDisk(std::size_t nth) {
  watched_syncs.count = 0;
  watched_syncs.failing = nth;
  watched_syncs.are_watched = true;
}

UnsafeDisk::~UnsafeDisk() { watched_syncs.are_watched = false; }

std::size_t UnsafeDisk::count() { return watched_syncs.count; }

}  // namespace pelora::testing
