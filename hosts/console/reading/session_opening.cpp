// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/reading/session_opening.h"

#include <memory>
#include <utility>

#include "hosts/console/reading/post.h"
#include "hosts/console/text/exception_text.h"

namespace pelora::console {

SessionOpening::SessionOpening(Open open, OpenedSink on_opened)
    : on_opened_(std::move(on_opened)),
      thread_([this, open = std::move(open)](const std::stop_token& stop) {
        const auto result = std::make_shared<session::SessionResult>();
        try {
          *result = open(stop);
        } catch (...) {
          *result = {.session = nullptr, .error = TextOfException()};
        }
        const auto tell = [this, result] {
          if (const OpenedSink told = std::exchange(on_opened_, nullptr)) told(std::move(*result));
        };
        PostSurely(receiver_, tell);
      }) {}

SessionOpening::~SessionOpening() = default;

}  // namespace pelora::console
