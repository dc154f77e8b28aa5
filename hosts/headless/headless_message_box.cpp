// SPDX-License-Identifier: Apache-2.0
#include "hosts/headless/headless_message_box.h"

#include <algorithm>

namespace pelora {

bool HeadlessMessageBox::HasToldOfError() const {
  return std::ranges::any_of(
      records_, [](const Record& record) { return record.message.icon == MessageIcon::kError; });
}

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
