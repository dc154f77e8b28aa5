// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <iosfwd>

#include "hosts/windows/system_headers.h"

namespace pelora::windows::test {

/// What this process holds of the system's things.
///
/// The system numbers handles, windows and drawing objects and gives free numbers to new ones
/// before it takes higher ones. So when many are made for the purpose, the highest number among
/// them tells how many there were before.
struct ResourceCounts {
  std::size_t handles = 0;
  std::size_t windows = 0;
  std::size_t drawing_objects = 0;
  /// Windows of this thread that can be enumerated, those below others included.
  std::size_t windows_of_thread = 0;
  /// Of this process.
  std::size_t threads = 0;
};

[[nodiscard]] ResourceCounts CountResources();

/// Windows of this thread alone, which is quickly counted.
[[nodiscard]] std::size_t CountWindowsOfThread();

/// Blocks of `new` and `malloc` in use, of the program and of every module that was compiled as it
/// was: they share the heap of the system's run-time library. What tests themselves keep counts too
/// (each success that they announce, and all that `MallocCounter` notes).
[[nodiscard]] std::size_t CountHeapBlocks();

void PrintTo(const ResourceCounts& counts, std::ostream* out);

}  // namespace pelora::windows::test
