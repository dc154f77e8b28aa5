// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <map>
#include <string>

namespace pelora::test {

/// Measures how long the window did not answer: the longest time between two turns of its events,
/// by what was going on.
class TurnMeter {
 public:
  TurnMeter() {
    QObject::connect(&timer_, &QTimer::timeout, [this] { Turn(); });
    timer_.start(0);
    since_.start();
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
    return std::ranges::max_element(gaps_, {}, [](const auto& gap) { return gap.second; })->second;
  }
  /// "opening 12, writing 31": the longest of each, in milliseconds.
  [[nodiscard]] std::string Text() {
    Note();
    std::string text;
    for (const auto& [phase, gap] : gaps_) {
      text += (text.empty() ? "" : ", ") + phase + " " + std::to_string(gap);
    }
    return text;
  }

 private:
  void Turn() {
    ++turns_;
    Note();
    since_.start();
  }
  void Note() { gaps_[phase_] = std::max(gaps_[phase_], since_.elapsed()); }

  QTimer timer_;
  QElapsedTimer since_;
  std::string phase_ = "beginning";
  std::map<std::string, qint64> gaps_;
  int turns_ = 0;
};

}  // namespace pelora::test
