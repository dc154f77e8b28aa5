// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/program/command_line.h"

#include <CLI/CLI.hpp>
#include <ostream>

namespace pelora::console {
namespace {

constexpr const char* kDescription =
    "Shows the objects of a directory and edits their Pelora settings.";

constexpr const char* kFooter =
    "Without --directory and --server the sample company's directory in the user's data folder is "
    "shown; it is\n"
    "made when the console is first started.\n"
    "\n"
    "Exit status:\n"
    "  0  done\n"
    "  1  there is no display, the directory cannot be opened, an object is not there or has no\n"
    "     properties, or the picture cannot be written\n"
    "  2  wrong arguments";

void AddOptions(CLI::App& app, CommandLine& line) {
  app.set_version_flag("--version", "pelora-console " PELORA_VERSION, "Show the version and exit");
  app.set_help_flag("--help", "Show this help and exit");
  auto* directory = app.add_option("--directory", line.directory, "Show the directory in this file")
                        ->type_name("FILE");
  app.add_option_function<std::string>(
         "--server", [&line](const std::string& server) { line.server = server; },
         "Show the domain of this domain controller, with your Kerberos ticket;\n"
         "without a name, one of the servers of the ticket's domain")
      ->type_name("HOST")
      ->expected(0, 1)
      ->excludes(directory);
  app.add_option("--site", line.site,
                 "Find a server of this site of the ticket's domain first, in place of your own\n"
                 "site's")
      ->type_name("NAME")
      ->excludes(directory);
  app.add_option("--open", line.open, "Open the properties of the objects of these names")
      ->type_name("DN")
      ->expected(1, CLI::detail::expected_max_vector_size);
  app.add_option("--view", line.view,
                 "Show this view, one of your own or of those in the list of views; what it asks\n"
                 "for stands behind a =: --view \"Own quota above=500\"")
      ->type_name("NAME[=ANSWER]");
  app.add_option("--screenshot", line.screenshot,
                 "Write a picture (PNG) of the properties, or else of the window, and exit;\n"
                 "needs no display")
      ->type_name("FILE");
  app.footer(kFooter);
}

}  // namespace

ParsedCommandLine ParseCommandLine(int argc, const char* const* argv, std::ostream& output,
                                   std::ostream& errors) {
  ParsedCommandLine parsed;
  CLI::App app(kDescription, "pelora-console");
  AddOptions(app, parsed.command_line);
  try {
    app.parse(argc, argv);
    CommandLine& line = parsed.command_line;
    if (!line.site.empty()) {
      if (!line.server.value_or("").empty()) throw CLI::ExcludesError("--site", "--server HOST");
      line.server = "";
    }
  } catch (const CLI::ParseError& error) {
    const bool asked_for = app.exit(error, output, errors) == kExitDone;
    parsed.exit_code = asked_for ? kExitDone : kExitWrongUsage;
  }
  return parsed;
}

}  // namespace pelora::console
