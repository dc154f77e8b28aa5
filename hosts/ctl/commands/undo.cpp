// SPDX-License-Identifier: Apache-2.0
#include "hosts/changes/undo_file.h"
#include "hosts/ctl/commands/commands.h"
#include "hosts/ctl/ctl_error.h"
#include "hosts/ctl/results/write_run.h"
#include "hosts/ctl/workplace.h"

namespace pelora::ctl {
namespace {

int RunUndo(const CommandLine& line, Program& program) {
  if (line.arguments.size() != 1) throw WrongUsage("one undo file is to be named");
  CheckOutputs(line, line.arguments.front());
  const std::unique_ptr<session::DirectorySession> session = OpenDirectory(line);
  const ldap::Schema& schema = session->store->schema();
  std::vector<changes::Change> undone;
  const ldap::StoreStatus status = changes::ReadUndoFile(line.arguments.front(), schema, undone);
  if (!status.Ok()) throw WrongUsage(status.text);
  WriteRun run(line, program, *session, undone.size());
  changes::RunOptions options = run.Options();
  // What somebody changed since is left alone, in lists too.
  options.lists = changes::Lists::kUntouched;
  changes::RunChanges(
      *session->store, undone, options,
      [&run](std::size_t /*at*/, const changes::Result& result) { run.results().Take(result); });
  return run.results().Finish();
}

}  // namespace

const Command& UndoCommand() {
  static const Command kCommand{
      .name = "undo",
      .synopsis = "FILE",
      .summary = "Take back what a command with --undo-file FILE did",
      .description = "Objects that somebody changed since, in the same attributes, are left alone.",
      .options = {WriteOptions()},
      .run = &RunUndo};
  return kCommand;
}

}  // namespace pelora::ctl
