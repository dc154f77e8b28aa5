// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/dialogs/win32_modal_dialogs.h"

#include "hosts/windows/dialogs/dialog_host.h"

namespace pelora::windows {
namespace {

INT_PTR CALLBACK DialogProcedure(HWND window, UINT message, WPARAM wide, LPARAM narrow) {
  if (message == WM_INITDIALOG) SetWindowLongPtrW(window, DWLP_USER, narrow);
  auto* const host = reinterpret_cast<DialogHost*>(GetWindowLongPtrW(window, DWLP_USER));
  return host == nullptr ? FALSE : host->OnMessage(window, message, wide, narrow);
}

}  // namespace

std::int32_t Win32ModalDialogs::Run(DialogId dialog, IDialog* owner,
                                    IDialogController& controller) {
  DialogHost host(controller, DialogRole::kModal);
  const INT_PTR result = DialogBoxParamW(instance_, MAKEINTRESOURCEW(dialog), OwnerWindow(owner),
                                         &DialogProcedure, reinterpret_cast<LPARAM>(&host));
  const bool is_ended = result > 0;
  if (!is_ended && host.HasStood()) return kDialogCancel;
  return static_cast<std::int32_t>(result);
}

}  // namespace pelora::windows
