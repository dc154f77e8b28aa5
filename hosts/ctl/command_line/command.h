// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace pelora::ctl {

struct Command;
struct Program;

/// What the program was asked to do. Each command looks at what its own options fill.
struct CommandLine {
  const Command* command = nullptr;
  /// What is no option.
  std::vector<std::string> arguments;

  // Which directory.
  std::optional<std::string> directory;
  /// Empty: one that is found.
  std::optional<std::string> server;
  bool sample = false;
  /// Whose servers come first when one is found.
  std::optional<std::string> site;

  bool json = false;
  bool quiet = false;

  // Commands that write.
  bool dry_run = false;
  std::optional<std::string> undo_file;
  std::optional<std::string> report;
  bool stop = false;

  // Commands that select objects.
  std::optional<std::string> filter;
  std::optional<std::string> class_name;
  std::optional<std::string> base;
  std::optional<std::string> from;

  // show, list
  bool together = false;
  bool all = false;
  bool csv = false;
  std::optional<std::string> columns;
  // new
  std::optional<std::string> in;
  bool password_stdin = false;
  // apply
  std::optional<std::string> empty;
  std::optional<std::string> retry;
  // check
  std::vector<std::string> rules;
  bool fix = false;
};

/// One option: `--name`, with a value when it has the name of one.
struct Option {
  using Target = std::variant<bool CommandLine::*, std::optional<std::string> CommandLine::*,
                              std::vector<std::string> CommandLine::*>;

  /// With its hyphens.
  std::string_view name;
  /// What the value is called; empty for an option without one.
  std::string_view value;
  std::string_view help;
  Target target;
};

/// One command. A new one is one of these, in a source of its own, and a row in `Commands()`.
struct Command {
  std::string_view name;
  /// What follows the name, as a synopsis shows it.
  std::string_view synopsis;
  /// One line.
  std::string_view summary;
  /// Further paragraphs of the help.
  std::string_view description;
  /// Beside those that every command has.
  std::vector<std::span<const Option>> options;
  /// Does it and gives the exit code. Throws `CtlError`.
  int (*run)(const CommandLine& line, Program& program);
};

/// Every command, in the order of the help.
[[nodiscard]] std::span<const Command* const> Commands();
/// Null when there is none of that name.
[[nodiscard]] const Command* FindCommand(std::string_view name);

// Options that several commands share.

/// Which directory; `--server` may stand without its value.
[[nodiscard]] std::span<const Option> ConnectionOptions();
[[nodiscard]] std::span<const Option> CommonOptions();
[[nodiscard]] std::span<const Option> WriteOptions();
[[nodiscard]] std::span<const Option> SelectionOptions();

}  // namespace pelora::ctl
