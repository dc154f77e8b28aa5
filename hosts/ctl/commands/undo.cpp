// SPDX-License-Identifier: Apache-2.0
#include "hosts/changes/undo_file.h"
#include "hosts/ctl/commands/commands.h"
#include "hosts/ctl/ctl_error.h"
#include "hosts/ctl/results/write_run.h"
#include "hosts/ctl/workplace.h"
#include "hosts/ldap/entry_values.h"

namespace pelora::ctl {
namespace {

/// Adds to the deletions of what was made of what classes it is, so that they can be taken back
/// too: what forbids them says nothing of classes, which nobody changes.
void AddClasses(ldap::IDirectoryStore& store, std::span<changes::Change> undone) {
  const std::vector<std::string> classes = {"objectClass"};
  std::vector<changes::Change*> deletions;
  std::vector<std::string> names;
  for (changes::Change& change : undone) {
    if (change.kind != changes::Change::Kind::kDelete) continue;
    deletions.push_back(&change);
    names.push_back(change.dn);
  }
  std::size_t at = 0;
  // What cannot be read now is told when it is deleted.
  static_cast<void>(
      store.ReadMany(names, classes, [&](const ldap::StoreStatus& read, const ldap::Entry& entry) {
        changes::Change& change = *deletions[at++];
        if (!read.Ok()) return true;
        change.attributes.push_back(
            {.attribute = classes.front(), .seen = ldap::ValuesOf(entry, classes.front())});
        return true;
      }));
}

int RunUndo(const CommandLine& line, Program& program) {
  if (line.arguments.size() != 1) throw WrongUsage("one undo file is to be named");
  CheckOutputs(line, line.arguments.front());
  const std::unique_ptr<session::DirectorySession> session = OpenDirectory(line);
  const ldap::Schema& schema = session->store->schema();
  std::vector<changes::Change> undone;
  const ldap::StoreStatus status = changes::ReadUndoFile(line.arguments.front(), schema, undone);
  if (!status.Ok()) throw WrongUsage(status.text);
  if (line.undo_file) AddClasses(*session->store, undone);
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
      .description =
          "Objects that somebody changed since, in the same attributes, are left alone; a list is\n"
          "changed when anything was put in or taken out.",
      .options = {WriteOptions()},
      .run = &RunUndo};
  return kCommand;
}

}  // namespace pelora::ctl
