// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "hosts/changes/change_runner.h"
#include "hosts/changes/undo_file.h"
#include "hosts/ctl/command_line/command.h"
#include "hosts/ctl/results/result_writer.h"
#include "hosts/session/directory_session.h"

namespace pelora::ctl {

/// Everything around the objects of a command that writes: the dry run's LDIF, the undo file, the
/// report, the results, and the end when it is interrupted.
class WriteRun {
 public:
  /// Makes the undo file and the report; throws `WrongUsage` when it cannot. `count` objects are to
  /// come. Command line, program and session outlive the run.
  WriteRun(const CommandLine& line, Program& program, const session::DirectorySession& session,
           std::size_t count);
  WriteRun(const WriteRun&) = delete;
  WriteRun& operator=(const WriteRun&) = delete;

  /// How the objects are to be worked on.
  [[nodiscard]] changes::RunOptions Options();
  [[nodiscard]] ResultWriter& results() { return results_; }

 private:
  const CommandLine& line_;
  Program& program_;
  std::unique_ptr<changes::IChangeLog> log_;
  ResultWriter results_;
};

/// Throws `WrongUsage` when the undo file that is to be made is there already, and when the report
/// would be written over a file that the command reads: `input` is one beside those of its options.
void CheckOutputs(const CommandLine& line, const std::string& input = {});

}  // namespace pelora::ctl
