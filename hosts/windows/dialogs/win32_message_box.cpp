// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/dialogs/win32_message_box.h"

#include "hosts/windows/dialogs/win32_dialog.h"
#include "hosts/windows/values/wide_text.h"

namespace pelora::windows {

std::int32_t Win32MessageBox::Show(IDialog* owner, const Message& message) {
  const std::wstring caption = ToWide(message.caption.value_or(""));
  return MessageBoxW(OwnerWindow(owner), ToWide(message.text).c_str(),
                     message.caption ? caption.c_str() : nullptr,
                     static_cast<UINT>(message.icon) | static_cast<UINT>(message.buttons));
}

}  // namespace pelora::windows
