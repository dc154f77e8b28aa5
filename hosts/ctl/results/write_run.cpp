// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/results/write_run.h"

#include <sys/stat.h>

#include "hosts/changes/ldif_changes.h"
#include "hosts/ctl/ctl_error.h"

namespace pelora::ctl {
namespace {

/// Prints changes in place of sending them.
class LdifPrint final : public changes::IChangeLog {
 public:
  LdifPrint(Output& output, const ldap::Schema& schema) : output_(output), schema_(schema) {}

  [[nodiscard]] ldap::StoreStatus Note(std::span<const changes::Change> noted,
                                       NoteId& first) override {
    first = next_;
    next_ += noted.size();
    for (const changes::Change& change : noted) output_.Write(changes::ToLdif(schema_, change));
    return {};
  }
  void Withdraw(NoteId /*note*/) override {}

 private:
  Output& output_;
  const ldap::Schema& schema_;
  NoteId next_ = 0;
};

std::unique_ptr<changes::IChangeLog> MakeLog(const CommandLine& line, Program& program,
                                             const ldap::Schema& schema) {
  CheckUndoFile(line);
  if (line.dry_run) return std::make_unique<LdifPrint>(program.output, schema);
  if (!line.undo_file) return nullptr;
  std::unique_ptr<changes::UndoFile> file;
  const ldap::StoreStatus status = changes::UndoFile::Create(*line.undo_file, schema, file);
  if (!status.Ok()) throw WrongUsage(status.text);
  return file;
}

}  // namespace

void CheckUndoFile(const CommandLine& line) {
  if (!line.undo_file) return;
  struct stat found {};
  if (lstat(line.undo_file->c_str(), &found) == 0) {
    throw WrongUsage(*line.undo_file + ": the file is there already");
  }
}

WriteRun::WriteRun(const CommandLine& line, Program& program, const ldap::Schema& schema,
                   std::size_t count)
    : line_(line),
      program_(program),
      log_(MakeLog(line, program, schema)),
      results_(line, program, count) {
  program_.interruption.FinishFirst();
}

changes::RunOptions WriteRun::Options() {
  return {.attributes = {},
          .stops_at_first = line_.stop,
          .is_rehearsal = line_.dry_run,
          .stop = program_.interruption.token(),
          .log = log_.get()};
}

}  // namespace pelora::ctl
