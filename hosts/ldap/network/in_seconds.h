// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <string>

namespace pelora::ldap {

/// How long was waited, as people are told: `5 seconds`, `0.7 seconds`.
[[nodiscard]] inline std::string InSeconds(std::chrono::milliseconds duration) {
  const auto tenths = duration.count() / 100;
  const std::string fraction = tenths % 10 == 0 ? "" : "." + std::to_string(tenths % 10);
  return std::to_string(tenths / 10) + fraction + " seconds";
}

}  // namespace pelora::ldap
