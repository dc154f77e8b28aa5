// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace pelora::test {

/// How a script of the shell ended, and what it printed.
struct ShellResult {
  int exit_code = -1;
  /// Both outputs, in the order in which they came.
  std::string output;
};

/// Runs a script in bash, which ends at its first failing command, in a folder. The program's own
/// folder is looked in before all others.
[[nodiscard]] ShellResult RunShell(const std::string& script, const std::string& folder);

/// A variable of the environment; throws when it is not set.
[[nodiscard]] std::string Environment(const char* name);

[[nodiscard]] std::string ReadWholeFile(const std::string& path);

}  // namespace pelora::test
