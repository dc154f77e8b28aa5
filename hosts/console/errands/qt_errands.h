// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <chrono>
#include <memory>

#include "hosts/session/errands.h"

namespace pelora::console {

struct ErrandPatience {
  /// Between two turns of the window's events so much may pass: an errand that takes less is not
  /// noticed at all.
  std::chrono::milliseconds still{15};
  /// After so long the person in front of it is told what is waited for.
  std::chrono::milliseconds silent{300};
  /// So long after Stop what is waited for is given up, too.
  std::chrono::milliseconds stopping{3000};
};

/// Errands on a thread beside the window. The window's events go on meanwhile, but for what the
/// person in front of it does: that has to wait. After a moment he is told what is waited for and
/// may stop it; nothing else can be used then.
///
/// An errand that is asked for within the events of another waits its turn, and that other one's
/// caller comes back after it.
class QtErrands final : public session::IErrands {
 public:
  explicit QtErrands(ErrandPatience patience = {});
  /// Waits for the errand under way; there is none unless its caller stands still below.
  ~QtErrands() override;
  QtErrands(const QtErrands&) = delete;
  QtErrands& operator=(const QtErrands&) = delete;

  void Run(const std::string& what, const Work& work) override;
  /// On the thread beside, behind what it has to do; here, when that cannot be.
  void LetGo(std::shared_ptr<void> what) noexcept override;
  [[nodiscard]] bool IsWithin() const override;
  void Breathe() override;

  /// Whether somebody waits for an errand.
  [[nodiscard]] bool IsRunning() const { return running_ > 0; }

 private:
  class Task;
  class Deafness;
  class Waiter;
  class Thread;

  /// Waits without a turn of events as long as nobody would notice. Whether the task is done.
  [[nodiscard]] bool WaitStill(Task& task);
  void WaitInEvents(const std::shared_ptr<Task>& task, const QString& what);

  ErrandPatience patience_;
  std::unique_ptr<Thread> thread_;
  int running_ = 0;
  /// The last turn of events.
  std::chrono::steady_clock::time_point turned_;
  /// Watches the turns; goes first.
  QObject turns_;
};

}  // namespace pelora::console
