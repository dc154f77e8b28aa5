// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdlib>

namespace pelora::testing {

/// How many rounds a test goes that could go on for ever: `in_short`, or as many as the environment
/// says in PELORA_LONG. Tests take rounds that they do not multiply by anything but their own
/// cases, so that one number means much the same to all; tests/long.sh sets it for each.
[[nodiscard]] inline std::size_t RoundsOr(std::size_t in_short) {
  const char* const asked = std::getenv("PELORA_LONG");
  const std::size_t rounds = asked == nullptr ? 0 : std::strtoul(asked, nullptr, 10);
  return rounds == 0 ? in_short : rounds;
}

}  // namespace pelora::testing
