// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>

#include "hosts/windows/dialogs/win32_dialog.h"
#include "platform/dialog_controller.h"

namespace pelora::windows {

/// Stands between one dialog window and what drives it: it turns the window's messages into calls
/// of the controller, and the controller's answers into the messages' results. No exception passes
/// it: a page whose controller throws while it applies stays open, any other answer is then 0.
class DialogHost {
 public:
  /// `controller` outlives the host.
  DialogHost(IDialogController& controller, DialogRole role)
      : controller_(controller), role_(role) {}
  DialogHost(const DialogHost&) = delete;
  DialogHost& operator=(const DialogHost&) = delete;

  /// What a dialog procedure returns. Messages before `WM_INITDIALOG` and after `WM_DESTROY` are
  /// left to the system.
  INT_PTR OnMessage(HWND window, UINT message, WPARAM wide, LPARAM narrow) noexcept;

  /// Whether the dialog has been made, be it gone again or not.
  [[nodiscard]] bool HasStood() const { return dialog_.has_value(); }

 private:
  INT_PTR Dispatch(HWND window, UINT message, WPARAM wide, LPARAM narrow);
  INT_PTR OnNotify(NMHDR& notification);
  INT_PTR OnPageNotification(const NMHDR& notification);
  INT_PTR OnListViewNotification(NMHDR& notification);
  void OnItemChanged(const NMLISTVIEW& change);
  LRESULT OnCustomDraw(NMLVCUSTOMDRAW& draw) const;
  INT_PTR Answer(LRESULT result) const;

  IDialogController& controller_;
  DialogRole role_;
  std::optional<Win32Dialog> dialog_;
};

}  // namespace pelora::windows
