// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "tests/lab/lab.h"

namespace pelora::lab {

[[nodiscard]] inline double SecondsOf(const std::function<void()>& action) {
  const auto begin = std::chrono::steady_clock::now();
  action();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

[[nodiscard]] inline double MedianOf(std::vector<double> values) {
  std::ranges::sort(values);
  return values[values.size() / 2];
}

/// The middle one of several runs of each of two actions, which take turns: what else the machine
/// does falls on both.
struct Pair {
  double first;
  double second;
};
[[nodiscard]] inline Pair MediansOf(int rounds, const std::function<void()>& first,
                                    const std::function<void()>& second) {
  std::vector<double> firsts;
  std::vector<double> seconds;
  for (int round = 0; round < rounds; ++round) {
    firsts.push_back(SecondsOf(first));
    seconds.push_back(SecondsOf(second));
  }
  return {MedianOf(std::move(firsts)), MedianOf(std::move(seconds))};
}

/// What a program and a tool took beside their time, when they were run once more for it: what
/// cannot be said of one of them is zero in both.
struct Counts {
  std::size_t requests = 0;
  std::size_t bytes = 0;
  std::size_t allocations = 0;
};

/// What was measured, one line each, printed as it comes.
class BenchTable {
 public:
  /// `limit` is the most that `ours` may be, in terms of `theirs`.
  void Add(const std::string& what, double ours, const std::string& against, double theirs,
           double limit, const char* unit = "s") {
    const double ratio = ours / theirs;
    const bool holds = ratio <= limit;
    all_hold_ = all_hold_ && holds;
    std::printf("%-36s %8.3f %-2s  %-30s %8.3f %-2s  %5.2f  of at most %5.2f  %s\n", what.c_str(),
                ours, unit, against.c_str(), theirs, unit, ratio, limit,
                holds ? "good" : "TOO MUCH");
    std::fflush(stdout);
  }
  /// What is measured beside, for comparison: nothing is asked of it.
  void AddBeside(const std::string& what, double ours, const std::string& against, double theirs,
                 const char* unit = "s") {
    std::printf("  %-34s %8.3f %-2s  %-30s %8.3f %-2s  %5.2f\n", what.c_str(), ours, unit,
                against.c_str(), theirs, unit, ours / theirs);
    std::fflush(stdout);
  }
  /// What the last line's two took beside their time; against nothing where `theirs` is none.
  void AddCounts(const Counts& ours, const Counts& theirs) {
    AddCount("requests", ours.requests, theirs.requests);
    AddCount("bytes", ours.bytes, theirs.bytes);
    AddCount("allocations", ours.allocations, theirs.allocations);
  }
  /// A line in words.
  void Explain(const std::string& text) {
    std::printf("    %s\n", text.c_str());
    std::fflush(stdout);
  }
  [[nodiscard]] bool AllHold() const { return all_hold_; }

 private:
  static void AddCount(const char* what, std::size_t ours, std::size_t theirs) {
    if (ours == 0) return;
    std::printf("    %-32s %8zu     ", what, ours);
    if (theirs > 0) {
      std::printf("%-30s %8zu     %5.2f", "", theirs,
                  static_cast<double>(ours) / static_cast<double>(theirs));
    }
    std::printf("\n");
    std::fflush(stdout);
  }

  bool all_hold_ = true;
};

/// How one of the LDAP tools is called.
[[nodiscard]] inline std::string Tool(const std::string& name,
                                      const std::string& server = Server()) {
  return name + " -N -Q -Y GSSAPI -H ldap://" + server + " ";
}

inline void RunTool(const std::string& command) {
  if (std::system(command.c_str()) != 0) throw std::runtime_error("failed: " + command);
}

}  // namespace pelora::lab
