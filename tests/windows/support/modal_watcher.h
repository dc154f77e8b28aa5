// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <deque>
#include <functional>
#include <set>

#include "hosts/windows/system_headers.h"

namespace pelora::windows::test {

/// Notices each dialog window that opens on this thread and waits for the user, and has something
/// done with it. It works from within the dialog's own message loop, so that the thread may stand
/// in the call that runs the dialog. Windows that were open before and property sheets are left
/// alone.
class ModalWatcher {
 public:
  using Action = std::function<void(HWND dialog)>;

  explicit ModalWatcher(Action action);
  ~ModalWatcher();
  ModalWatcher(const ModalWatcher&) = delete;
  ModalWatcher& operator=(const ModalWatcher&) = delete;

 private:
  static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wide, LPARAM narrow);
  void Look();

  Action action_;
  std::set<HWND> known_;
  HWND timer_window_ = nullptr;
};

/// The top-level dialog windows of this thread that are shown, apart from property sheets.
[[nodiscard]] std::set<HWND> ShownDialogs();

}  // namespace pelora::windows::test
