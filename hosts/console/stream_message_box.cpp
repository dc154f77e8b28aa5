// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/stream_message_box.h"

#include <ostream>

#include "platform/dialog_controller.h"

namespace pelora::console {

std::int32_t StreamMessageBox::Show(IDialog* /*owner*/, const Message& message) {
  has_shown_ = true;
  std::string text = message.text;
  std::erase(text, '\r');
  stream_ << message.caption.value_or("Error") << ": " << text << '\n';
  return message.buttons == MessageButtons::kYesNo ? kDialogNo : kDialogOk;
}

}  // namespace pelora::console
