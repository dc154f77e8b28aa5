// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace pelora::lab {

/// What a whole process took.
struct ChildUsage {
  int exit_code = 0;
  /// From its beginning to its end.
  double seconds = 0;
  /// Of the process and what it waited for, on its own behalf and the system's.
  double cpu_seconds = 0;
  /// The most memory that it had at once.
  double megabytes = 0;
};

/// Runs a program with its output thrown away. Throws when it cannot be run or ends by a signal.
[[nodiscard]] ChildUsage UsageOf(const std::vector<std::string>& command);

}  // namespace pelora::lab
