// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>

namespace pelora::session {

// When an account ends, as a directory holds it: a count of 100 nanoseconds since 1601, in
// Greenwich time. 0, and more than any calendar knows, is never.

/// What is stored for an account that never ends.
inline constexpr std::int64_t kNeverEnds = 0x7FFFFFFFFFFFFFFF;

[[nodiscard]] constexpr bool Ends(std::int64_t stored) {
  return stored > 0 && stored != kNeverEnds;
}

/// The last day on which an account can be used, "2026-12-31", by the clock of this machine; one
/// that ends in the midst of a day, with the minute: "2026-12-31 17:30". Empty for one that never
/// ends.
[[nodiscard]] std::string LastDayText(std::int64_t stored);

/// What is stored for such a text: a day is over at its midnight. Never for an empty one; nothing
/// for what is no day.
[[nodiscard]] std::optional<std::int64_t> EndOfLastDay(std::string_view text);

/// The point of time that is stored.
[[nodiscard]] std::time_t TimeOfStored(std::int64_t stored);

}  // namespace pelora::session
