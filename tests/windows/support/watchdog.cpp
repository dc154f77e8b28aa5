// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/support/watchdog.h"

#include <cstdio>

#include "hosts/windows/system_headers.h"

namespace pelora::windows::test {

Watchdog::Watchdog(std::chrono::milliseconds patience)
    : patience_(patience), thread_([this] { Watch(); }) {}

Watchdog::~Watchdog() {
  {
    const std::scoped_lock lock(mutex_);
    is_over_ = true;
  }
  changed_.notify_all();
  thread_.join();
}

void Watchdog::Feed(const std::string& doing) {
  const std::scoped_lock lock(mutex_);
  fed_ = std::chrono::steady_clock::now();
  doing_ = doing;
}

void Watchdog::Watch() {
  std::unique_lock lock(mutex_);
  while (!is_over_) {
    const auto deadline = fed_ + patience_;
    changed_.wait_until(lock, deadline, [this] { return is_over_; });
    if (is_over_ || std::chrono::steady_clock::now() < fed_ + patience_) continue;
    std::fprintf(stderr, "watchdog: no sign of life for %lld ms while %s\n",
                 static_cast<long long>(patience_.count()), doing_.c_str());
    std::fflush(stderr);
    TerminateProcess(GetCurrentProcess(), kWatchdogExitCode);
  }
}

}  // namespace pelora::windows::test
