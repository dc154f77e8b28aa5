// SPDX-License-Identifier: Apache-2.0
#include "hosts/headless/headless_message_box.h"

namespace pelora {

std::int32_t HeadlessMessageBox::Show(IDialog* owner, const Message& message) {
  std::int32_t answer = message.buttons == MessageButtons::kYesNo ? kDialogNo : kDialogOk;
  if (!answers_.empty()) {
    answer = answers_.front();
    answers_.pop_front();
  }
  records_.push_back({message, owner, answer});
  return answer;
}

}  // namespace pelora
