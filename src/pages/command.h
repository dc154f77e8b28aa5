// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>

#include "platform/dialog_controller.h"

namespace pelora {

/// What a page does when one of its controls reports something; the result is the message's result.
using CommandHandler = std::function<std::int32_t()>;

/// One row of a page's command table.
struct Command {
  ControlId control = 0;
  ControlNotification notification = ControlNotification::kClicked;
  CommandHandler handler;
};

}  // namespace pelora
