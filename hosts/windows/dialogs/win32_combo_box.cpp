// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/dialogs/win32_combo_box.h"

namespace pelora::windows {

void Win32ComboBox::Add(std::string_view text) { window_.SendText(CB_ADDSTRING, 0, text); }

void Win32ComboBox::Clear() { window_.Send(CB_RESETCONTENT); }

RowIndex Win32ComboBox::Count() const { return window_.AskIndex(CB_GETCOUNT).value_or(0); }

std::string Win32ComboBox::Text(RowIndex row) const {
  return row < Count() ? window_.AskText(CB_GETLBTEXTLEN, CB_GETLBTEXT, row) : std::string();
}

std::optional<RowIndex> Win32ComboBox::Selection() const { return window_.AskIndex(CB_GETCURSEL); }

void Win32ComboBox::Select(std::optional<RowIndex> row) {
  constexpr auto kNoRow = static_cast<WPARAM>(-1);
  const bool exists = row && *row < Count();
  window_.Send(CB_SETCURSEL, exists ? *row : kNoRow);
}

}  // namespace pelora::windows
