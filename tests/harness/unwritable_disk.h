// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <limits>

// For a program of its own: every `pwrite`, `ftruncate`, `fsync` and `fdatasync` of it goes through
// here, those of the database's library too.

namespace pelora::testing {

/// While it stands, the disk takes so many more writes of this program, and then none: its file
/// system has become read-only. So a system does itself when a disk has errors; by hand it cannot
/// be done as long as a file is open for writing.
class UnwritableDisk {
 public:
  static constexpr std::size_t kWritable = std::numeric_limits<std::size_t>::max();

  /// `kWritable`: writes are only counted.
  explicit UnwritableDisk(std::size_t writes_left = 0);
  UnwritableDisk(const UnwritableDisk&) = delete;
  UnwritableDisk& operator=(const UnwritableDisk&) = delete;
  ~UnwritableDisk();

  /// How many writes have been asked for since it stands.
  [[nodiscard]] static std::size_t count();
};

/// While it stands, the disk fails once to say that what it was given is safe: for the `nth` time
/// from now (1: the next) that it is asked; 0: never.
class UnsafeDisk {
 public:
  explicit UnsafeDisk(std::size_t nth);
  UnsafeDisk(const UnsafeDisk&) = delete;
  UnsafeDisk& operator=(const UnsafeDisk&) = delete;
  ~UnsafeDisk();

  /// How often it has been asked since it stands.
  [[nodiscard]] static std::size_t count();
};

}  // namespace pelora::testing
