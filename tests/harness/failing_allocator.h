// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

// For a program of its own: every `new` of it goes through here.

namespace pelora::testing {

/// While it stands, allocations count, and one of them fails: `std::bad_alloc`, once.
class FailingAllocations {
 public:
  /// Allocation number `nth` fails (1: the next); 0: none does, they are only counted.
  /// `counts`: of whose code; none: of everybody's.
  explicit FailingAllocations(std::size_t nth, bool (*counts)(const void* code) = nullptr);
  FailingAllocations(const FailingAllocations&) = delete;
  FailingAllocations& operator=(const FailingAllocations&) = delete;
  ~FailingAllocations();

  /// How many there have been since it stands.
  [[nodiscard]] static std::size_t count();
  /// The same with what was given back: how much was done with memory.
  [[nodiscard]] static std::size_t count_with_releases();
};

}  // namespace pelora::testing
