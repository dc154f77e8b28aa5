// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <time.h>

#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <map>
#include <string>

namespace pelora::test {

/// Measures how long the window did not answer: the longest time between two turns of its events,
/// by what was going on; and how much of that its thread was at work, which says the same on a
/// machine that has other things to do.
class TurnMeter {
 public:
  TurnMeter() {
    QObject::connect(&timer_, &QTimer::timeout, [this] { Turn(); });
    timer_.start(0);
    Begin();
  }
  TurnMeter(const TurnMeter&) = delete;
  TurnMeter& operator=(const TurnMeter&) = delete;

  /// What goes on from now on; empty: what says nothing of the window, until the next.
  void Enter(const std::string& phase) {
    Note();
    if (phase_.empty()) Begin();
    phase_ = phase;
  }
  [[nodiscard]] int turns() const { return turns_; }
  /// In milliseconds.
  [[nodiscard]] qint64 longest() { return Longest(&Gap::passed); }
  /// The longest that the window's thread was at work without a turn, in milliseconds.
  [[nodiscard]] qint64 longest_at_work() { return Longest(&Gap::at_work); }
  /// "opening 12 (9 at work), writing 31 (30 at work)": the longest of each, in milliseconds.
  [[nodiscard]] std::string Text() {
    Note();
    std::string text;
    for (const auto& [phase, gap] : gaps_) {
      text += (text.empty() ? "" : ", ") + phase + " " + std::to_string(gap.passed) + " (" +
              std::to_string(gap.at_work) + " at work)";
    }
    return text;
  }

 private:
  struct Gap {
    qint64 passed = 0;
    qint64 at_work = 0;
  };

  [[nodiscard]] qint64 Longest(qint64 Gap::*part) {
    Note();
    qint64 longest = 0;
    for (const auto& [phase, gap] : gaps_) longest = std::max(longest, gap.*part);
    return longest;
  }
  void Turn() {
    ++turns_;
    Note();
    Begin();
  }
  void Begin() {
    since_.start();
    worked_ = Worked();
  }
  void Note() {
    if (phase_.empty()) return;
    Gap& gap = gaps_[phase_];
    gap.passed = std::max(gap.passed, since_.elapsed());
    gap.at_work = std::max(gap.at_work, Worked() - worked_);
  }
  /// Of this thread, in milliseconds.
  [[nodiscard]] static qint64 Worked() {
    timespec time{};
    (void)clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return qint64{time.tv_sec} * 1000 + time.tv_nsec / 1'000'000;
  }

  QTimer timer_;
  QElapsedTimer since_;
  qint64 worked_ = 0;
  std::string phase_ = "beginning";
  std::map<std::string, Gap> gaps_;
  int turns_ = 0;
};

}  // namespace pelora::test
