// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/commands/commands.h"
#include "hosts/ctl/ctl_error.h"
#include "hosts/ctl/results/json_line.h"
#include "hosts/ctl/results/text_table.h"
#include "hosts/ctl/workplace.h"
#include "hosts/session/connection_status.h"

namespace pelora::ctl {
namespace {

int RunStatus(const CommandLine& line, Program& program) {
  if (!line.arguments.empty()) throw WrongUsage("the status takes no objects");
  const std::unique_ptr<session::DirectorySession> session = OpenDirectory(line);
  session::ConnectionStatus status;
  const ldap::StoreStatus read = session::ReadConnectionStatus(*session, *session->store, status);
  if (!read.Ok()) throw CtlError(kExitNoDirectory, "the directory cannot be asked: " + read.text);
  if (line.json) {
    program.output.WriteLine(JsonLine(session::ConnectionJson(status)));
    return kExitDone;
  }
  TextTable table({});
  for (const session::ConnectionRow& row : session::ConnectionRows(status, std::time(nullptr))) {
    table.Add({row.label + ":", row.text});
  }
  table.Print(program.output);
  return kExitDone;
}

}  // namespace

const Command& StatusCommand() {
  static const Command kCommand{
      .name = "status",
      .synopsis = "",
      .summary = "Say which directory is used, and how",
      .description =
          "Says which server is used and why it was chosen, whether it takes changes, as whom you "
          "are\nsigned in and until when, how the connection is sealed, and how far the server's "
          "clock is off.",
      .options = {},
      .run = &RunStatus};
  return kCommand;
}

}  // namespace pelora::ctl
