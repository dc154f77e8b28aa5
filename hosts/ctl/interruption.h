// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <mutex>
#include <stop_token>
#include <string>
#include <thread>

namespace pelora::ctl {

/// Takes SIGINT and SIGTERM for the program. At first they end it at once, with the exit code of an
/// interruption; once there is something to finish they only ask to stop. One that was ignored when
/// the program was started stays so.
///
/// Made before any other thread, so that the signals reach nobody else. SIGPIPE is ignored: a
/// closed pipe is an answer to a write.
class Interruption {
 public:
  Interruption();
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;
  ~Interruption();

  /// From now on what is under way is finished.
  void FinishFirst() { finishes_first_ = true; }
  /// Signals are somebody else's, who runs before the program on its terminal, until told
  /// otherwise.
  void Ignore(bool ignored) { is_ignored_ = ignored; }
  /// A line that is told when a signal ends the program at once: what the person would not find
  /// otherwise. Empty: nothing.
  void SetLastWords(const std::string& line);

  [[nodiscard]] std::stop_token token() const { return source_.get_token(); }
  [[nodiscard]] bool happened() const { return source_.stop_requested(); }

 private:
  void Watch();
  [[noreturn]] void End();

  bool ignores_int_;
  bool ignores_term_;
  std::stop_source source_;
  std::atomic<bool> finishes_first_ = false;
  std::atomic<bool> is_ignored_ = false;
  std::atomic<bool> is_over_ = false;
  std::mutex words_access_;
  std::string last_words_;
  std::thread watcher_;
};

}  // namespace pelora::ctl
