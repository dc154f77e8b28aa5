// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pelora::testing {

// For a program whose allocations can fail (`failing_allocator.h`).

using Action = std::function<bool()>;

/// Allocations to try of so many: all, or some that lie evenly between the first and the last.
[[nodiscard]] std::vector<std::size_t> Tried(std::size_t allocations);

/// What an action comes to while an allocation fails; nothing: it ended with `std::bad_alloc`.
std::optional<bool> Starved(std::size_t allocation, const Action& action);

/// How many allocations an action makes, which comes off.
std::size_t CountOf(const Action& action);

/// One line for whoever sums up what was tried.
void TellFailed(std::string_view where, std::size_t failed);

/// What the box says when the module ran out of memory.
[[nodiscard]] std::string OutOfMemoryText();

}  // namespace pelora::testing
