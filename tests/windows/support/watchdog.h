// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace pelora::windows::test {

/// Exit code of a program that the watchdog ended.
inline constexpr unsigned int kWatchdogExitCode = 97;

/// Ends the program, with an exit code of its own, when it has not shown signs of life for a while:
/// a modal window that nobody closes would keep it for ever.
class Watchdog {
 public:
  explicit Watchdog(std::chrono::milliseconds patience);
  ~Watchdog();
  Watchdog(const Watchdog&) = delete;
  Watchdog& operator=(const Watchdog&) = delete;

  /// A sign of life; `doing` is what is said when it was the last one.
  void Feed(const std::string& doing);

 private:
  void Watch();

  const std::chrono::milliseconds patience_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::chrono::steady_clock::time_point fed_ = std::chrono::steady_clock::now();
  std::string doing_ = "starting";
  bool is_over_ = false;
  std::thread thread_;
};

}  // namespace pelora::windows::test
