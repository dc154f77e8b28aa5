// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <csignal>

namespace pelora::ldap {

/// While it lives, writing to a connection that the other side has closed is a failure of the write
/// and not the end of the program, whatever the program does with such signals elsewhere.
class BrokenPipeGuard {
 public:
  BrokenPipeGuard() {
    sigemptyset(&broken_pipe_);
    sigaddset(&broken_pipe_, SIGPIPE);
    sigset_t pending;
    sigpending(&pending);
    was_pending_ = sigismember(&pending, SIGPIPE) == 1;
    pthread_sigmask(SIG_BLOCK, &broken_pipe_, &before_);
  }
  BrokenPipeGuard(const BrokenPipeGuard&) = delete;
  BrokenPipeGuard& operator=(const BrokenPipeGuard&) = delete;
  ~BrokenPipeGuard() {
    // One that came in meanwhile was meant for the write that failed.
    constexpr timespec kNoWait{};
    if (!was_pending_) sigtimedwait(&broken_pipe_, nullptr, &kNoWait);
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
  }

 private:
  sigset_t broken_pipe_{};
  sigset_t before_{};
  bool was_pending_ = false;
};

}  // namespace pelora::ldap
