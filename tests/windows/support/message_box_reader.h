// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <iosfwd>
#include <string>
#include <utility>
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

/// Deals with every dialog that opens on this thread while it lives and waits for the user, so that
/// the call that runs it comes back. A message box (nothing but texts and buttons) is read, and a
/// button of it pressed: the one that was said beforehand, else Yes where there is one, else OK.
/// Another dialog is played by the next script; without one the test fails and the dialog is
/// closed. Property sheets are left alone.
class MessageBoxReader {
 public:
  using Script = std::function<void(HWND dialog)>;

  MessageBoxReader();

  [[nodiscard]] const std::vector<ShownBox>& boxes() const { return boxes_; }
  /// The boxes since the last time.
  [[nodiscard]] std::vector<ShownBox> TakeBoxes() { return std::exchange(boxes_, {}); }

  /// Has the next message box that nothing is said of yet answered with this button.
  void AnswerNext(int button) { answers_.push_back(button); }
  /// What happens while the next message box is open, before it is answered.
  void BeforeNext(std::function<void()> action) { before_next_ = std::move(action); }
  /// Has the next dialog that is no message box played by `script`, which has to close it.
  void PlayNext(Script script) { scripts_.push_back(std::move(script)); }
  /// Scripts that no dialog has opened for.
  [[nodiscard]] std::size_t pending_scripts() const { return scripts_.size(); }

 private:
  void DealWith(HWND dialog);
  void Read(HWND box);
  void Play(HWND dialog);

  std::vector<ShownBox> boxes_;
  std::deque<int> answers_;
  std::function<void()> before_next_;
  std::deque<Script> scripts_;
  ModalWatcher watcher_;
};

}  // namespace pelora::windows::test
