// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/results/write_run.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>

#include "hosts/changes/ldif_changes.h"
#include "hosts/ctl/ctl_error.h"
#include "hosts/ldap/network/deleted_names.h"

namespace pelora::ctl {
namespace {

/// Prints changes in place of sending them.
class LdifPrint final : public changes::IChangeLog {
 public:
  LdifPrint(Output& output, const session::DirectorySession& session)
      : output_(output), schema_(session.store->schema()), is_file_(session.is_file) {}

  [[nodiscard]] ldap::StoreStatus Note(std::span<const changes::Change> noted,
                                       NoteId& first) override {
    first = next_;
    next_ += noted.size();
    for (changes::Change change : noted) {
      if (!is_file_) NameRemovedAsSent(change);
      output_.Write(changes::ToLdif(schema_, change));
    }
    return {};
  }
  void Withdraw(NoteId /*note*/) override {}

 private:
  /// A server does not find deleted objects by the names that it gives for them.
  void NameRemovedAsSent(changes::Change& change) const {
    for (changes::ValueChange& value : change.attributes) {
      if (changes::SyntaxOf(schema_, value.attribute) != ldap::Syntax::kDistinguishedName) continue;
      for (std::string& name : value.seen) {
        const bool is_kept = std::ranges::find(value.wanted, name) != value.wanted.end();
        if (!is_kept) name = ldap::NameForRemoval(name);
      }
    }
  }

  Output& output_;
  const ldap::Schema& schema_;
  bool is_file_;
  NoteId next_ = 0;
};

/// Whether two names are those of one file; terminals and pipes may be read and written.
bool IsSameFile(const std::string& left, const std::string& right) {
  struct stat one {};
  struct stat other {};
  if (stat(left.c_str(), &one) != 0 || stat(right.c_str(), &other) != 0) return false;
  return S_ISREG(one.st_mode) && one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

/// The report begins anew: what it is written over is lost.
void CheckReport(const CommandLine& line, const std::string& input) {
  if (!line.report) return;
  for (const std::string& read :
       {line.retry.value_or(""), line.from.value_or(""), line.directory.value_or(""), input}) {
    if (!read.empty() && IsSameFile(*line.report, read)) {
      throw WrongUsage(*line.report + ": the report cannot be written over what is read");
    }
  }
  const auto whole = [](const std::string& path) {
    return std::filesystem::weakly_canonical(std::filesystem::absolute(path));
  };
  if (line.undo_file && whole(*line.undo_file) == whole(*line.report)) {
    throw WrongUsage(*line.report + ": the report and the undo file cannot be one file");
  }
}

std::unique_ptr<changes::IChangeLog> MakeLog(const CommandLine& line, Program& program,
                                             const session::DirectorySession& session) {
  // Only now it is known which directory the environment named.
  CheckOutputs(line, session.is_file ? session.path : std::string());
  if (line.dry_run) return std::make_unique<LdifPrint>(program.output, session);
  if (!line.undo_file) return nullptr;
  std::unique_ptr<changes::UndoFile> file;
  const ldap::StoreStatus status =
      changes::UndoFile::Create(*line.undo_file, session.store->schema(), file);
  if (!status.Ok()) throw WrongUsage(status.text);
  return file;
}

}  // namespace

void CheckOutputs(const CommandLine& line, const std::string& input) {
  CheckReport(line, input);
  if (!line.undo_file) return;
  struct stat found {};
  if (lstat(line.undo_file->c_str(), &found) == 0) {
    throw WrongUsage(*line.undo_file + ": the file is there already");
  }
}

WriteRun::WriteRun(const CommandLine& line, Program& program,
                   const session::DirectorySession& session, std::size_t count)
    : line_(line),
      program_(program),
      log_(MakeLog(line, program, session)),
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
