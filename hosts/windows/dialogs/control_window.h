// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "hosts/windows/system_headers.h"
#include "platform/dialog.h"

namespace pelora::windows {

/// Kind of a control, from its window class.
enum class ControlKind : std::uint8_t {
  kButton,
  kEdit,
  kStatic,
  kListBox,
  kComboBox,
  kListView,
  kOther,
};

/// The window of one control, or none: then every message goes unanswered. It owns nothing.
class ControlWindow {
 public:
  ControlWindow() = default;
  explicit ControlWindow(HWND window) : window_(window) {}
  /// The control of a dialog; none when there is none of that number.
  ControlWindow(HWND dialog, ControlId id);

  [[nodiscard]] HWND window() const { return window_; }
  explicit operator bool() const { return window_ != nullptr; }
  [[nodiscard]] ControlKind Kind() const;
  /// This window when it is of the kind, else none.
  [[nodiscard]] ControlWindow If(ControlKind kind) const;
  /// The style bits; 0 of no window.
  [[nodiscard]] DWORD Style() const;

  /// The answer to a message; nothing without a window.
  std::optional<LRESULT> Send(UINT message, WPARAM wide = 0, LPARAM narrow = 0) const;
  std::optional<LRESULT> SendText(UINT message, WPARAM wide, std::string_view text) const;
  /// The answer as a count or position: nothing when it is negative.
  [[nodiscard]] std::optional<RowIndex> AskIndex(UINT message, WPARAM wide = 0,
                                                 LPARAM narrow = 0) const;
  /// A row's text by a pair of messages that give its length and the text.
  [[nodiscard]] std::string AskText(UINT length_message, UINT text_message, RowIndex row) const;

 private:
  HWND window_ = nullptr;
};

}  // namespace pelora::windows
