// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/choosers/owner_window.h"

#include "hosts/windows/dialogs/win32_dialog.h"

namespace pelora::windows {

HWND WindowOf(ChooserOwner owner) {
  const HWND dialog = OwnerWindow(owner.dialog);
  if (owner.control == 0) return dialog;
  const HWND control = GetDlgItem(dialog, static_cast<int>(owner.control));
  return control == nullptr ? dialog : control;
}

}  // namespace pelora::windows
