// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/results/result_writer.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "hosts/ctl/ctl_error.h"
#include "hosts/ctl/results/result_text.h"
#include "hosts/session/result_json.h"

namespace pelora::ctl {
namespace {

constexpr std::chrono::milliseconds kProgressPause(100);
constexpr mode_t kReportMode = 0666;

}  // namespace

ResultWriter::ResultWriter(const CommandLine& line, Program& program, std::size_t count)
    : program_(program),
      is_json_(line.json),
      is_quiet_(line.quiet),
      is_rehearsal_(line.dry_run),
      output_(line.dry_run ? program.errors : program.output),
      count_(count) {
  if (!line.report) return;
  report_name_ = *line.report;
  report_ = ldap::FileDescriptor(
      open(report_name_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, kReportMode));
  if (!report_) throw WrongUsage(report_name_ + ": " + std::generic_category().message(errno));
}

void ResultWriter::Take(const changes::Result& result) {
  ++taken_;
  tally_.Count(result.outcome);
  ClearProgress();
  output_.WriteLine(is_json_ ? session::ResultJson(result) : ResultLine(result));
  output_.Flush();
  if (report_) {
    const auto done = is_rehearsal_ ? session::Done::kRehearsed : session::Done::kReally;
    Report(session::ResultJson(result, done) + "\n");
  }
  ShowProgress();
}

int ResultWriter::Finish() {
  ClearProgress();
  output_.Flush();
  if (!is_quiet_) {
    program_.errors.WriteLine(tally_.Text());
    program_.errors.Flush();
  }
  const bool is_cut_short = tally_[changes::Outcome::kSkipped] > 0;
  if (is_cut_short && program_.interruption.happened()) return kExitInterrupted;
  return tally_.IsAllDone() ? kExitDone : kExitNotAll;
}

void ResultWriter::Report(const std::string& line) {
  std::string_view left = line;
  while (!left.empty()) {
    const ssize_t written = write(report_.get(), left.data(), left.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) {
      Tell(program_,
           report_name_ + ": " + std::generic_category().message(errno) + "; the report ends here");
      report_ = {};
      return;
    }
    left.remove_prefix(static_cast<std::size_t>(written));
  }
}

void ResultWriter::ShowProgress() {
  if (is_quiet_ || !program_.errors.is_terminal()) return;
  const auto now = std::chrono::steady_clock::now();
  if (now - last_progress_ < kProgressPause) return;
  last_progress_ = now;
  has_progress_ = true;
  program_.errors.Write(std::to_string(taken_) + " of " + std::to_string(count_));
  program_.errors.Flush();
}

void ResultWriter::ClearProgress() {
  if (!has_progress_) return;
  has_progress_ = false;
  program_.errors.Write("\r\x1B[K");
  program_.errors.Flush();
}

}  // namespace pelora::ctl
