// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/message_box.h"

namespace pelora::windows {

/// The system's message boxes. Texts keep every character, whatever the system's code page.
class Win32MessageBox final : public IMessageBox {
 public:
  std::int32_t Show(IDialog* owner, const Message& message) override;
};

}  // namespace pelora::windows
