// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/dialogs/win32_list_view.h"

#include "hosts/windows/values/wide_text.h"

namespace pelora::windows {
namespace {

LPARAM Address(const auto& structure) { return reinterpret_cast<LPARAM>(&structure); }

}  // namespace

void Win32ListView::SetFullRowSelect(bool full) {
  window_.Send(LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_FULLROWSELECT, full ? LVS_EX_FULLROWSELECT : 0);
}

void Win32ListView::InsertColumn(std::size_t column, std::string_view title, int width) {
  std::wstring text = ToWide(title);
  LVCOLUMNW inserted = {};
  inserted.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
  inserted.cx = width;
  inserted.pszText = text.data();
  inserted.iSubItem = static_cast<int>(column);
  window_.Send(LVM_INSERTCOLUMNW, column, Address(inserted));
}

void Win32ListView::InsertRow(RowIndex row, std::string_view text) {
  std::wstring wide = ToWide(text);
  LVITEMW item = {};
  item.mask = LVIF_TEXT;
  item.iItem = static_cast<int>(row);
  item.pszText = wide.data();
  window_.Send(LVM_INSERTITEMW, 0, Address(item));
}

RowIndex Win32ListView::RowCount() const { return window_.AskIndex(LVM_GETITEMCOUNT).value_or(0); }

std::string Win32ListView::Text(RowIndex row, std::size_t column) const {
  if (row >= RowCount()) return {};
  // The control tells no lengths: the room grows until the text fits with its ending.
  std::wstring text(128, L'\0');
  while (true) {
    LVITEMW item = {};
    item.iSubItem = static_cast<int>(column);
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    const RowIndex length = window_.AskIndex(LVM_GETITEMTEXTW, row, Address(item)).value_or(0);
    if (length + 1 < text.size()) return ToNarrow({item.pszText, length});
    text.resize(text.size() * 2);
  }
}

void Win32ListView::SetText(RowIndex row, std::size_t column, std::string_view text) {
  std::wstring wide = ToWide(text);
  LVITEMW item = {};
  item.iSubItem = static_cast<int>(column);
  item.pszText = wide.data();
  window_.Send(LVM_SETITEMTEXTW, row, Address(item));
}

bool Win32ListView::IsSelected(RowIndex row) const {
  const LRESULT state = window_.Send(LVM_GETITEMSTATE, row, LVIS_SELECTED).value_or(0);
  return (state & LVIS_SELECTED) != 0;
}

void Win32ListView::SetSelected(RowIndex row, bool selected) {
  // Row -1 would stand for all of them.
  if (row >= RowCount()) return;
  LVITEMW item = {};
  item.state = selected ? LVIS_SELECTED : 0;
  item.stateMask = LVIS_SELECTED;
  window_.Send(LVM_SETITEMSTATE, row, Address(item));
}

}  // namespace pelora::windows
