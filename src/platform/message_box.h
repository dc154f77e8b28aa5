// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/dialog.h"

namespace pelora {

/// With the platform's numbers.
enum class MessageIcon : std::uint32_t { kNone = 0, kError = 0x10, kWarning = 0x30 };
enum class MessageButtons : std::uint32_t { kOk = 0, kYesNo = 4 };

struct Message {
  std::string text;
  /// None: the system's default caption.
  std::optional<std::string> caption;
  MessageIcon icon = MessageIcon::kNone;
  MessageButtons buttons = MessageButtons::kOk;
};

/// Shows messages to the administrator.
class IMessageBox {
 public:
  virtual ~IMessageBox() = default;

  /// Shows a box modal to `owner` (none: the active window) and waits for its answer: `kDialogOk`,
  /// `kDialogYes` or `kDialogNo`. Lines of the text are divided by "\r\n".
  virtual std::int32_t Show(IDialog* owner, const Message& message) = 0;
};

}  // namespace pelora
