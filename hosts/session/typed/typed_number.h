// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "hosts/session/typed/judgement.h"

namespace pelora::session {

/// The largest number that a field takes.
inline constexpr std::int64_t kLargestNumber = 2147483647;
inline constexpr std::int64_t kLargestPort = 65535;

/// The number that decimal digits stand for, up to `kLargestNumber`; none for anything else.
[[nodiscard]] std::optional<std::int64_t> NumberOfDigits(std::string_view digits);

/// The megabytes that a text stands for: digits, in groups of three where blanks divide them, with
/// a unit (MB, GB, TB and their first letters, in any case) or without one, which is MB. GB and TB
/// may have decimals behind a point or a comma; what is less than a megabyte is rounded up. None
/// for any other text and for more than `kLargestNumber`.
[[nodiscard]] std::optional<std::int64_t> MegabytesOf(std::string_view text);

// An empty text is fine: the field is not set.

[[nodiscard]] Judgement JudgeNumber(std::string_view text);
/// Says how a text with a unit or with blanks is understood.
[[nodiscard]] Judgement JudgeMegabytes(std::string_view text);
[[nodiscard]] Judgement JudgePort(std::string_view text);

}  // namespace pelora::session
