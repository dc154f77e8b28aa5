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

  /// What goes on from now on.
  void Enter(const std::string& phase) {
    Note();
    phase_ = phase;
  }
  [[nodiscard]] int turns() const { return turns_; }
  /// In milliseconds.
  [[nodiscard]] qint64 longest() {
    Note();
    return std::ranges::max_element(gaps_, {}, [](const auto& gap) { return gap.second.passed; })
        ->second.passed;
  }
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
