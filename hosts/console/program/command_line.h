// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace pelora::console {

/// What the program answers to its caller.
enum ExitCode : int {
  kExitDone = 0,
  /// No display, a directory that cannot be opened, an unknown name, a picture that cannot be
  /// written.
  kExitFailure = 1,
  kExitWrongUsage = 2,
};

/// What the console was asked to do.
struct CommandLine {
  /// Directory file; none: the sample company's.
  std::optional<std::string> directory;
  /// Server of the domain that is to be shown, in place of a file; empty: one that is found.
  std::optional<std::string> server;
  /// Site of the ticket's domain whose servers come first when one is found.
  std::string site;
  /// Distinguished names whose property sheet is to be opened.
  std::vector<std::string> open;
  /// View to show, "NAME" or "NAME=ANSWER"; none: the directory's base.
  std::optional<std::string> view;
  /// Picture to write instead of showing windows.
  std::optional<std::string> screenshot;
};

struct ParsedCommandLine {
  CommandLine command_line;
  /// Set when there is nothing left to do: help or version were asked for, or the arguments are
  /// wrong. What is to be said has been written then.
  std::optional<int> exit_code;
};

[[nodiscard]] ParsedCommandLine ParseCommandLine(int argc, const char* const* argv,
                                                 std::ostream& output, std::ostream& errors);

}  // namespace pelora::console
