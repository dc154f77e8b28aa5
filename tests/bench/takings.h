// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <ctime>
#include <functional>
#include <string>
#include <vector>

#include "tests/bench/bench_table.h"
#include "tests/bench/server_clock.h"

namespace pelora::lab {

/// What several runs of something took: of the clock, of this program's processor time, and of the
/// server's meanwhile.
class Takings {
 public:
  void Do(const std::function<void()>& action) {
    const double own_before = OwnSeconds();
    const double server_before = ServerSeconds();
    seconds_.push_back(SecondsOf(action));
    server_.push_back(ServerSeconds() - server_before);
    own_.push_back(OwnSeconds() - own_before);
  }
  [[nodiscard]] double Seconds() const { return MedianOf(seconds_); }
  [[nodiscard]] double Own() const { return MedianOf(own_); }
  [[nodiscard]] double Server() const { return MedianOf(server_); }

 private:
  /// Of all threads; what is waited for in other programs does not count.
  static double OwnSeconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
  }

  std::vector<double> seconds_;
  std::vector<double> own_;
  std::vector<double> server_;
};

/// Adds a row for what was done beside a tool, and what it took of the server's processor.
inline void AddBesideTool(BenchTable& table, const std::string& what, const Takings& ours,
                          const std::string& tool, const Takings& theirs, double limit) {
  table.Add(what, ours.Seconds(), tool, theirs.Seconds(), limit);
  table.AddBeside("the server's processor meanwhile", ours.Server(), "for the tool",
                  theirs.Server());
}

/// Adds a row for what was done with many and with few of the same, and whose processor it took: a
/// server that takes more than its share for many leaves nobody else the limit.
inline void AddGrowth(BenchTable& table, const std::string& what, const Takings& many,
                      const std::string& of_few, const Takings& few, double limit) {
  table.Add(what, many.Seconds(), of_few, few.Seconds(), limit);
  table.AddBeside("this program's processor", many.Own(), of_few, few.Own());
  table.AddBeside("the server's processor meanwhile", many.Server(), of_few, few.Server());
}

}  // namespace pelora::lab
