// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "platform/message_box.h"
#include "tests/windows/support/modal_watcher.h"

namespace pelora::windows::test {

/// What a message box shows.
struct ShownBox {
  std::string caption;
  std::string text;
  MessageIcon icon = MessageIcon::kNone;
  /// Captions of its buttons, mnemonic marks removed.
  std::vector<std::string> buttons;
  /// Caption of the window that owns it; empty when there is none.
  std::string owner;

  friend bool operator==(const ShownBox&, const ShownBox&) = default;
};

void PrintTo(const ShownBox& box, std::ostream* out);

/// Reads every message box that opens on this thread while it lives and presses a button of it: Yes
/// where there is one, else OK.
class MessageBoxReader {
 public:
  MessageBoxReader();

  [[nodiscard]] const std::vector<ShownBox>& boxes() const { return boxes_; }
  /// Leaves dialogs alone for a while: somebody else deals with them.
  void Pause() { is_paused_ = true; }
  void Resume() { is_paused_ = false; }
  /// Another dialog that is not to be taken for a message box.
  void Ignore(HWND window) { watcher_.Ignore(window); }

 private:
  void Read(HWND box);

  std::vector<ShownBox> boxes_;
  bool is_paused_ = false;
  ModalWatcher watcher_;
};

}  // namespace pelora::windows::test
