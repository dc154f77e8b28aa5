// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/commands/commands.h"
#include "hosts/ctl/ctl_error.h"
#include "hosts/ctl/fields/offline_catalogue.h"
#include "hosts/ctl/pages/change_objects.h"
#include "hosts/ctl/text/assignment.h"

namespace pelora::ctl {
namespace {

int RunSet(const CommandLine& line, Program& program) {
  const ObjectsAndAssignments given = SortArguments(line.arguments);
  if (given.assignments.empty()) throw WrongUsage("no FIELD=VALUE is given");
  OfflineCatalogue offline(program.module);
  CheckAssignments(given.assignments, offline.catalogue);
  CheckOutputs(line);
  Workplace workplace(line, program);
  const std::vector<std::string> names = NamesOf(line, given.objects);
  // From here on an interruption is reported for each object.
  program.interruption.FinishFirst();
  const std::vector<Target> targets = TargetsOf(line, names, workplace);
  return ChangeObjects(line, program, workplace, targets,
                       [&given](std::size_t /*at*/) { return std::span(given.assignments); });
}

}  // namespace

const Command& SetCommand() {
  static const Command kCommand{
      .name = "set",
      .synopsis = "OBJECT... FIELD=VALUE...",
      .summary = "Change settings of objects",
      .description =
          "FIELD=VALUE sets a field, FIELD= empties it, FIELD+=VALUE and FIELD-=VALUE add to a "
          "list\nand remove from it. The values of a list are divided by ;. An OBJECT is a "
          "distinguished name,\nor what exactly one object is called: its logon name, an address, "
          "its name.",
      .options = {SelectionOptions(), WriteOptions()},
      .run = &RunSet};
  return kCommand;
}

}  // namespace pelora::ctl
