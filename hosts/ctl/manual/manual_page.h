// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace pelora::ctl {

/// What a manual page is made with.
struct ManualSources {
  std::string version;
  /// The help text of a program or, with a blank behind the program's name, of one of its commands.
  /// Throws for a name that it does not know.
  std::function<std::string(const std::string& name)> help_of;
  /// The names of the program's commands.
  std::vector<std::string> commands;
  /// Paragraphs about things that are kept in tables, in the page's own format, by their name.
  std::function<std::string(const std::string& name)> table_of;
};

/// Makes a manual page (in the format of man(7)) of a page that leaves out what the programs say of
/// themselves. A line of its own stands for it there:
///
///     @VERSION@                 the version, also within a line
///     @USAGE name@              how it is called
///     @INTRODUCTION name@       what stands under no heading, before the options
///     @NOTES name@              what stands under no heading behind them
///     @SECTION name: title@     what stands under one heading
///     @COMMANDS name@           each command with its usage, introduction and options
///     @TABLE name@              a table of the program's
///
/// Throws `std::runtime_error` for a line that stands for something unknown or for nothing.
[[nodiscard]] std::string MakeManualPage(std::string_view page, const ManualSources& sources);

/// A text as such a page has it: signs that mean something to the formatter are escaped.
[[nodiscard]] std::string ManualText(std::string_view text);

}  // namespace pelora::ctl
