// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/interruption.h"

#include <signal.h>
#include <unistd.h>

#include "hosts/ctl/ctl_error.h"
#include "hosts/session/visible_text.h"

namespace pelora::ctl {
namespace {

sigset_t WatchedSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  return signals;
}

/// Whether whoever started the program wants it to take no notice, as a shell does of what it puts
/// into the background.
bool IsIgnored(int signal) {
  struct sigaction action {};
  return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}  // namespace

Interruption::Interruption() : ignores_int_(IsIgnored(SIGINT)), ignores_term_(IsIgnored(SIGTERM)) {
  signal(SIGPIPE, SIG_IGN);
  const sigset_t signals = WatchedSignals();
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
  watcher_ = std::thread([this] { Watch(); });
}

Interruption::~Interruption() {
  is_over_ = true;
  pthread_kill(watcher_.native_handle(), SIGTERM);
  watcher_.join();
}

void Interruption::SetLastWords(const std::string& line) {
  const std::scoped_lock access(words_access_);
  last_words_ = line.empty() ? line : "peloractl: " + session::VisibleText(line) + "\n";
}

void Interruption::End() {
  const std::scoped_lock access(words_access_);
  // Nothing can be done about words that nobody hears.
  const ssize_t told = write(STDERR_FILENO, last_words_.data(), last_words_.size());
  static_cast<void>(told);
  _exit(kExitInterrupted);
}

void Interruption::Watch() {
  const sigset_t signals = WatchedSignals();
  while (true) {
    int signal = 0;
    if (sigwait(&signals, &signal) != 0 || is_over_) return;
    if (signal == SIGINT ? ignores_int_ || is_ignored_ : ignores_term_) continue;
    if (!finishes_first_) End();
    source_.request_stop();
  }
}

}  // namespace pelora::ctl
