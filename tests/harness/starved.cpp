// SPDX-License-Identifier: Apache-2.0
#include "tests/harness/starved.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <new>
#include <vector>

#include "directory/error_text.h"
#include "tests/harness/failing_allocator.h"
#include "tests/support/long_form.h"

namespace pelora::testing {
namespace {

/// How many allocations of each action are tried, unless all are.
constexpr std::size_t kTriedInShort = 25;

/// Allocations to try of so many: all, or some that lie evenly between the first and the last.
std::vector<std::size_t> Tried(std::size_t allocations) {
  const std::size_t wanted = std::min(RoundsOr(kTriedInShort), allocations);
  std::vector<std::size_t> tried;
  for (std::size_t at = 0; at < wanted; ++at) tried.push_back(at * allocations / wanted + 1);
  return tried;
}

}  // namespace

std::optional<bool> Starved(std::size_t allocation, const Action& action) {
  const FailingAllocations failing(allocation);
  try {
    return action();
  } catch (const std::bad_alloc&) {
    return std::nullopt;
  }
}

std::size_t CountOf(const Action& action) {
  const FailingAllocations counting(0);
  EXPECT_TRUE(action());
  return FailingAllocations::count();
}

void StarveEach(std::string_view where, std::span<const Starving> all) {
  std::size_t failed = 0;
  for (const Starving& starving : all) {
    for (const std::size_t allocation : Tried(starving.allocations)) {
      SCOPED_TRACE(std::string(starving.what) + ", allocation " + std::to_string(allocation));
      starving.play(allocation);
      ++failed;
      if (::testing::Test::HasFailure()) return;
    }
  }
  std::cout << "allocations failed and survived: " << failed << " (" << where << ")\n";
}

std::string OutOfMemoryText() {
  return "Unknown error occured\r\n\r\nError code: " + CodeText(E_OUTOFMEMORY);
}

}  // namespace pelora::testing
