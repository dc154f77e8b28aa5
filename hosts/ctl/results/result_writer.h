// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

#include "hosts/changes/change_runner.h"
#include "hosts/ctl/command_line/command.h"
#include "hosts/ctl/program.h"
#include "hosts/ldap/file_descriptor.h"

namespace pelora::ctl {

/// Tells what becomes of objects, one by one: lines or JSON on the output (with a dry run on the
/// errors' output), the same as JSON in a report, progress meanwhile, and the sums at the end.
class ResultWriter {
 public:
  /// Opens the report, when one is wanted; throws `WrongUsage` when it cannot be. `count` objects
  /// are to come. The program outlives the writer.
  ResultWriter(const CommandLine& line, Program& program, std::size_t count);

  void Take(const changes::Result& result);
  /// Makes room on the terminal for who prints something else.
  void ClearProgress();
  /// Prints the sums, and gives the exit code.
  [[nodiscard]] int Finish();

 private:
  void Report(const std::string& line);
  void ShowProgress();

  Program& program_;
  bool is_json_;
  bool is_quiet_;
  bool is_rehearsal_;
  Output& output_;
  std::size_t count_;
  std::size_t taken_ = 0;
  changes::Tally tally_;
  std::string report_name_;
  ldap::FileDescriptor report_;
  bool has_progress_ = false;
  std::chrono::steady_clock::time_point last_progress_{};
};

}  // namespace pelora::ctl
