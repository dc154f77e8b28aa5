// SPDX-License-Identifier: Apache-2.0
#include "directory/ascii_case.h"
#include "hosts/ctl/commands/commands.h"
#include "hosts/ctl/ctl_error.h"
#include "hosts/ctl/fields/offline_catalogue.h"
#include "hosts/ctl/objects/change_table.h"
#include "hosts/ctl/pages/change_objects.h"
#include "hosts/ctl/text/input_file.h"

namespace pelora::ctl {
namespace {

int RunApply(const CommandLine& line, Program& program) {
  if (line.arguments.size() != 1) throw WrongUsage("one CSV file is to be named");
  if (line.empty && !EqualsWithoutCase(*line.empty, "clears")) {
    throw WrongUsage("--empty: there is only \"clears\"");
  }
  const std::string& path = line.arguments.front();
  if (path == "-" && line.retry == "-") {
    throw WrongUsage("standard input cannot be both the table and the report of --retry");
  }
  const std::string text = ReadInput(path);
  OfflineCatalogue offline(program.module);
  ChangeTable table(text, InputName(path), offline.catalogue, line.empty.has_value());
  std::vector<std::string> done;
  if (line.retry) done = ReadDone(*line.retry);
  CheckOutputs(line, path);
  Workplace workplace(line, program);
  // From here on an interruption is reported for each object.
  program.interruption.FinishFirst();
  table.Resolve(workplace.finder, done);
  return ChangeObjects(line, program, workplace, table.targets(),
                       [&table](std::size_t at) { return table.AssignmentsAt(at); });
}

constexpr std::array kOptions = {
    Option{"--empty", "clears", "An empty cell empties the field; without it, it is left as it is",
           &CommandLine::empty},
    Option{"--retry", "REPORT", "Only the rows whose objects this report does not say are done",
           &CommandLine::retry},
};

}  // namespace

const Command& ApplyCommand() {
  static const Command kCommand{
      .name = "apply",
      .synopsis = "FILE.csv",
      .summary = "Change many objects, a row each",
      .description =
          "The table's first row names its columns: dn or object, which names the object, and "
          "FIELD,\nFIELD+ or FIELD-. The columns name and class are ignored, and those that the "
          "console "
          "has for\nevery object (type, folder and so on), so that what list --csv prints and the "
          "console exports\ncan be edited and applied. - reads standard input.",
      .options = {kOptions, WriteOptions()},
      .run = &RunApply};
  return kCommand;
}

}  // namespace pelora::ctl
