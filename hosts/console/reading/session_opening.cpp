// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/reading/session_opening.h"

#include <memory>
#include <utility>

namespace pelora::console {

SessionOpening::SessionOpening(Open open, OpenedSink on_opened)
    : on_opened_(std::move(on_opened)),
      thread_([this, open = std::move(open)](const std::stop_token& stop) {
        auto result = std::make_shared<session::SessionResult>(open(stop));
        const auto tell = [this, result] {
          if (const OpenedSink told = std::exchange(on_opened_, nullptr)) told(std::move(*result));
        };
        QMetaObject::invokeMethod(&receiver_, tell, Qt::QueuedConnection);
      }) {}

SessionOpening::~SessionOpening() = default;

}  // namespace pelora::console
