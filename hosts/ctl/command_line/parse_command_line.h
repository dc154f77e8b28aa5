// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <span>
#include <string>

#include "hosts/ctl/command_line/command.h"

namespace pelora::ctl {

/// What the program was started for, or what there is to say instead.
struct ParsedCommandLine {
  CommandLine line;
  /// Set when help or the version was asked for: the text to print.
  std::optional<std::string> text;
};

/// Reads the arguments behind the program's name. Options stand before or behind the command's
/// word, and what follows `--` is no option. The value of `--server` may be left out: a command's
/// word is never taken for it, nor what begins with `-` or holds a `=`.
///
/// Throws `WrongUsage`.
[[nodiscard]] ParsedCommandLine ParseCommandLine(std::span<const std::string> arguments);

/// The help of the program, or of one command.
[[nodiscard]] std::string HelpText(const Command* command);

}  // namespace pelora::ctl
