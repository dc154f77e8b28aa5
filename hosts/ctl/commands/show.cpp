// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/commands/commands.h"
#include "hosts/ctl/ctl_error.h"
#include "hosts/ctl/objects/read_settings.h"
#include "hosts/ctl/results/show_settings.h"
#include "hosts/ctl/text/assignment.h"

namespace pelora::ctl {
namespace {

int RunShow(const CommandLine& line, Program& program) {
  const std::vector<std::string> named = OnlyObjects(line.arguments);
  Workplace workplace(line, program);
  const std::vector<Target> targets = TargetsOf(line, NamesOf(line, named), workplace);
  int code = kExitDone;
  TogetherShown together;
  const auto take = [&](const Target& /*target*/, const ldap::Entry& entry) {
    const ShownObject object = SettingsOf(entry, workplace);
    if (line.together) {
      together.Add(object);
    } else if (line.json) {
      program.output.WriteLine(SettingsJson(object));
    } else {
      PrintSettings(object, program.output);
    }
  };
  const auto refuse = [&](const Target& target, const std::string& problem) {
    Tell(program, target.given + ": " + problem);
    code = kExitNotAll;
  };
  ReadEntries(workplace, targets, take, refuse);
  if (line.together) together.Print(line.json, program.output);
  return code;
}

constexpr std::array kOptions = {
    Option{"--together", "", "Show the objects as one selection", &CommandLine::together},
};

}  // namespace

const Command& ShowCommand() {
  static const Command kCommand{
      .name = "show",
      .synopsis = "OBJECT...",
      .summary = "Print the settings of objects",
      .description =
          "Shows each object's settings tab by tab. An OBJECT is a distinguished name, "
          "or what exactly\none object is called: its logon name, an address, its name.",
      .options = {kOptions, SelectionOptions()},
      .run = &RunShow};
  return kCommand;
}

}  // namespace pelora::ctl
