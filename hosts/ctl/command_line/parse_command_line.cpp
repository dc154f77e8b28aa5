// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/command_line/parse_command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "hosts/ctl/ctl_error.h"

namespace pelora::ctl {
namespace {

constexpr std::string_view kServer = "--server";
constexpr std::string_view kNoMoreOptions = "--";
constexpr const char* kHelp = "--help";
constexpr const char* kVersion = "--version";

constexpr const char* kDescription =
    "Reads and changes the Pelora settings of the objects of a directory.";
constexpr const char* kFooter =
    "Without --directory, --server and --sample the environment's PELORA_DIRECTORY or "
    "PELORA_SERVER\n"
    "says which directory, or else the domain of your Kerberos ticket is meant.\n"
    "\n"
    "peloractl COMMAND --help shows the options of a command.\n"
    "\n"
    "Exit status:\n"
    "  0    everything was done\n"
    "  1    an object was refused, failed, is unknown or was skipped; a check found something\n"
    "  2    wrong arguments: nothing was done\n"
    "  3    there is no directory\n"
    "  130  interrupted: the object under way was finished, the rest skipped";

void AddOption(CLI::App& app, const Option& option, CommandLine& line) {
  const std::string name(option.name);
  const std::string help(option.help);
  CLI::Option* added = std::visit(
      [&](auto member) -> CLI::Option* {
        auto& target = line.*member;
        if constexpr (std::is_same_v<decltype(target), bool&>) {
          return app.add_flag(name, target, help);
        } else {
          return app.add_option(name, target, help);
        }
      },
      option.target);
  if (option.value.empty()) return;
  added->type_name(std::string(option.value));
  if (std::holds_alternative<std::vector<std::string> CommandLine::*>(option.target)) {
    added->expected(1)->take_all()->allow_extra_args(false);
  }
}

void AddOptions(CLI::App& app, std::span<const Option> options, CommandLine& line) {
  for (const Option& option : options) AddOption(app, option, line);
}

/// Shows how a command is called as its synopsis has it.
class SynopsisFormatter final : public CLI::Formatter {
 public:
  explicit SynopsisFormatter(std::string synopsis) : synopsis_(std::move(synopsis)) {
    constexpr std::size_t kHelpColumn = 28;
    column_width(kHelpColumn);
  }

  [[nodiscard]] std::string make_usage(const CLI::App* /*app*/,
                                       std::string /*name*/) const override {
    return "Usage: peloractl [CONNECTION] " + synopsis_ + "\n";
  }

 private:
  std::string synopsis_;
};

/// The parser of one command, or of the program without one.
void SetUp(CLI::App& app, const Command* command, CommandLine& line) {
  app.set_help_flag(kHelp, "Show this help and exit");
  app.formatter(std::make_shared<SynopsisFormatter>(
      command == nullptr
          ? "COMMAND [ARGUMENT...]"
          : std::string(command->name) + " [OPTION...] " + std::string(command->synopsis)));
  AddOptions(app, ConnectionOptions(), line);
  AddOptions(app, CommonOptions(), line);
  if (command == nullptr) {
    app.set_version_flag(kVersion, "peloractl " PELORA_VERSION, "Show the version and exit");
    app.footer(kFooter);
    for (const Command* each : Commands()) {
      app.add_subcommand(std::string(each->name), std::string(each->summary));
    }
    return;
  }
  for (const std::span<const Option> options : command->options) AddOptions(app, options, line);
  app.allow_extras();
}

/// What the parser left: the arguments that are no options. The library would read a language of
/// its own into them, in which brackets and braces mean something. Throws `WrongUsage`.
std::vector<std::string> ArgumentsOf(std::vector<std::string> left) {
  const auto end = std::ranges::find(left, kNoMoreOptions);
  const auto option = std::find_if(left.begin(), end, [](const std::string& argument) {
    return argument.starts_with('-') && argument.size() > 1;
  });
  if (option != end) throw WrongUsage("there is no option \"" + *option + "\"");
  if (end != left.end()) left.erase(end);
  return left;
}

std::string DescriptionOf(const Command* command) {
  if (command == nullptr) return kDescription;
  std::string text = std::string(command->summary) + ".";
  if (!command->description.empty()) text += "\n\n" + std::string(command->description);
  return text;
}

/// Whether an option that stands before the command's word takes the argument behind it.
bool TakesValue(std::string_view option) {
  const auto takes = [option](std::span<const Option> options) {
    return std::ranges::any_of(options, [option](const Option& known) {
      return known.name == option && !known.value.empty() && known.name != kServer;
    });
  };
  if (takes(ConnectionOptions()) || takes(CommonOptions())) return true;
  return std::ranges::any_of(Commands(), [&takes](const Command* command) {
    return std::ranges::any_of(command->options, takes);
  });
}

/// Whether an option says all by standing there.
bool IsAlone(std::string_view option) {
  const auto is_alone = [option](std::span<const Option> options) {
    return std::ranges::any_of(options, [option](const Option& known) {
      return known.name == option && known.value.empty();
    });
  };
  if (option == kHelp || option == kVersion) return true;
  if (is_alone(ConnectionOptions()) || is_alone(CommonOptions())) return true;
  return std::ranges::any_of(Commands(), [&is_alone](const Command* command) {
    return std::ranges::any_of(command->options, is_alone);
  });
}

[[noreturn]] void RefuseEmptyValue(std::string_view option) {
  throw WrongUsage(std::string(option) + ": the value is empty");
}

/// Refuses arguments that are not what they look like. A value that is empty is none: a script's
/// variable was not set, and what it was to narrow would be everything.
void CheckArguments(std::span<const std::string> arguments) {
  for (std::size_t index = 0; index < arguments.size(); ++index) {
    const std::string_view argument = arguments[index];
    if (argument == kNoMoreOptions) return;
    // The library would take it for the end of everything.
    if (argument == "++") throw WrongUsage("++ is written behind --");
    const std::string_view name = argument.substr(0, argument.find('='));
    // The library would read yes and no there, and everything else in some other way.
    if (argument.size() > name.size() && IsAlone(name)) {
      throw WrongUsage(std::string(name) + ": it takes no value");
    }
    const bool may_have_value = TakesValue(name) || name == kServer;
    if (may_have_value && argument.size() == name.size() + 1) RefuseEmptyValue(name);
    const bool is_next_empty = index + 1 < arguments.size() && arguments[index + 1].empty();
    if (may_have_value && argument == name && is_next_empty) RefuseEmptyValue(name);
    if (TakesValue(argument)) ++index;
  }
}

bool IsHost(std::string_view argument) {
  return !argument.empty() && !argument.starts_with('-') && argument.find('=') == argument.npos &&
         FindCommand(argument) == nullptr;
}

/// The arguments with the value of `--server` joined to it, be it empty.
std::vector<std::string> WithServerJoined(std::span<const std::string> arguments,
                                          std::optional<std::string>& server) {
  std::vector<std::string> joined;
  for (std::size_t index = 0; index < arguments.size(); ++index) {
    const std::string& argument = arguments[index];
    if (argument == kNoMoreOptions) {
      joined.insert(joined.end(), arguments.begin() + static_cast<std::ptrdiff_t>(index),
                    arguments.end());
      break;
    }
    if (TakesValue(argument) && index + 1 < arguments.size()) {
      joined.push_back(argument);
      joined.push_back(arguments[++index]);
    } else if (argument == kServer) {
      const bool has_host = index + 1 < arguments.size() && IsHost(arguments[index + 1]);
      server = has_host ? arguments[++index] : std::string();
    } else if (argument.starts_with(std::string(kServer) + "=")) {
      server = argument.substr(kServer.size() + 1);
    } else {
      joined.push_back(argument);
    }
  }
  return joined;
}

/// Takes the command's word out of the arguments; null when there is none.
const Command* TakeCommand(std::vector<std::string>& arguments) {
  for (std::size_t index = 0; index < arguments.size(); ++index) {
    const std::string& argument = arguments[index];
    if (argument == kNoMoreOptions) return nullptr;
    if (argument.starts_with('-') && argument.size() > 1) {
      if (TakesValue(argument)) ++index;
      continue;
    }
    const Command* command = FindCommand(argument);
    if (command == nullptr) throw WrongUsage("there is no command \"" + argument + "\"");
    arguments.erase(arguments.begin() + static_cast<std::ptrdiff_t>(index));
    return command;
  }
  return nullptr;
}

std::string TextOf(const CLI::App& app, const CLI::Success& asked) {
  if (dynamic_cast<const CLI::CallForVersion*>(&asked) != nullptr) {
    return std::string(asked.what()) + "\n";
  }
  return app.help();
}

}  // namespace

ParsedCommandLine ParseCommandLine(std::span<const std::string> arguments) {
  ParsedCommandLine parsed;
  CommandLine& line = parsed.line;
  CheckArguments(arguments);
  std::optional<std::string> server;
  std::vector<std::string> left = WithServerJoined(arguments, server);
  line.command = TakeCommand(left);
  CLI::App app(DescriptionOf(line.command), "peloractl");
  SetUp(app, line.command, line);
  try {
    std::ranges::reverse(left);
    app.parse(std::move(left));
    line.arguments = ArgumentsOf(app.remaining());
  } catch (const CLI::Success& asked) {
    parsed.text = TextOf(app, asked);
    return parsed;
  } catch (const CLI::ParseError& error) {
    throw WrongUsage(error.what());
  }
  if (line.command == nullptr) throw WrongUsage("a command is missing");
  line.server = std::move(server);
  const int named = (line.directory ? 1 : 0) + (line.server ? 1 : 0) + (line.sample ? 1 : 0);
  if (named > 1) throw WrongUsage("only one of --directory, --server and --sample can be given");
  const bool is_found = !line.directory && !line.sample && line.server.value_or("").empty();
  if (line.site && !is_found) {
    throw WrongUsage("--site is for a server that is found, not for a directory that is named");
  }
  return parsed;
}

std::string HelpText(const Command* command) {
  CommandLine line;
  CLI::App app(DescriptionOf(command), "peloractl");
  SetUp(app, command, line);
  return app.help();
}

}  // namespace pelora::ctl
