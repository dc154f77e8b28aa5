// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <ctime>
#include <optional>
#include <string>

namespace pelora::session {

/// A time as directories write it: 14 digits from the year to the second, a fraction perhaps, and
/// the zone, which is always that of Greenwich. Nothing when the text is none.
[[nodiscard]] std::optional<std::time_t> ReadDirectoryTime(const std::string& text);

/// A time to the minute, as the clock on this machine's wall has it: "2026-11-22 10:05". Empty when
/// the machine cannot tell.
[[nodiscard]] std::string WallTimeText(std::time_t time);

/// A time to the second in the zone of Greenwich, for programs: "2026-11-22T10:05:00Z".
[[nodiscard]] std::string UniversalTimeText(std::time_t time);

}  // namespace pelora::session
