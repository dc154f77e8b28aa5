// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/message_box.h"

namespace pelora::console {

/// Message boxes of the desktop. Texts are shown as they are, never as markup.
class QtMessageBox final : public IMessageBox {
 public:
  std::int32_t Show(IDialog* owner, const Message& message) override;
};

}  // namespace pelora::console
