// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace pelora::testing {

// For a program whose allocations can fail (`failing_allocator.h`).

using Action = std::function<bool()>;

/// What an action comes to while an allocation fails; nothing: it ended with `std::bad_alloc`.
std::optional<bool> Starved(std::size_t allocation, const Action& action);

/// How many allocations an action makes, which comes off.
std::size_t CountOf(const Action& action);

/// What is played while allocations of it fail.
struct Starving {
  /// "loading".
  std::string_view what;
  /// How many it makes.
  std::size_t allocations = 0;
  std::function<void(std::size_t allocation)> play;
};

/// Plays each of them once for every allocation that is tried, up to the first that does not hold.
/// Ends with one line for whoever sums up what was tried.
void StarveEach(std::string_view where, std::span<const Starving> all);

/// What the box says when the module ran out of memory.
[[nodiscard]] std::string OutOfMemoryText();

}  // namespace pelora::testing
