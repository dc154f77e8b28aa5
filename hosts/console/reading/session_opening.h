// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <functional>
#include <stop_token>
#include <thread>

#include "hosts/session/directory_session.h"

namespace pelora::console {

/// Opens a directory beside the user interface, for connecting to a server takes its time.
///
/// `on_opened` is called once, on the thread of the user interface, unless the opening was stopped
/// before; it may destroy the opening. Destroying it stops it, and waits until it has heard of
/// that.
class SessionOpening final {
 public:
  using Open = std::function<session::SessionResult(const std::stop_token& stop)>;
  using OpenedSink = std::function<void(session::SessionResult result)>;

  /// `open` is called on a thread of its own; what it is given ends it early.
  SessionOpening(Open open, OpenedSink on_opened);
  ~SessionOpening();
  SessionOpening(const SessionOpening&) = delete;
  SessionOpening& operator=(const SessionOpening&) = delete;

  /// Whatever comes of it is of no interest any more.
  void Stop() {
    on_opened_ = nullptr;
    thread_.request_stop();
  }
  /// Until the result has been told, or it was stopped.
  [[nodiscard]] bool IsRunning() const { return on_opened_ != nullptr; }

 private:
  OpenedSink on_opened_;
  /// Where the thread's result arrives; one that has not arrived goes with it.
  QObject receiver_;
  std::jthread thread_;
};

}  // namespace pelora::console
