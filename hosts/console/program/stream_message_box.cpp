// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/program/stream_message_box.h"

#include <ostream>

#include "hosts/session/visible_text.h"
#include "platform/dialog_controller.h"

namespace pelora::console {

std::int32_t StreamMessageBox::Show(IDialog* /*owner*/, const Message& message) {
  has_shown_ = true;
  std::string text = message.text;
  std::erase(text, '\r');
  const std::string caption = message.caption.value_or("Error");
  stream_ << session::VisibleText(caption) << ": " << session::VisibleText(text, "\n") << '\n';
  return message.buttons == MessageButtons::kYesNo ? kDialogNo : kDialogOk;
}

}  // namespace pelora::console
