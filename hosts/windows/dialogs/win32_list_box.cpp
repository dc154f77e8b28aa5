// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/dialogs/win32_list_box.h"

#include <vector>

namespace pelora::windows {
namespace {

/// What clears the selection where a row is asked for.
constexpr auto kNoRow = static_cast<WPARAM>(-1);

}  // namespace

std::optional<RowIndex> Win32ListBox::Add(std::string_view text) {
  const std::optional<LRESULT> row = window_.SendText(LB_ADDSTRING, 0, text);
  if (!row || *row < 0) return std::nullopt;
  return static_cast<RowIndex>(*row);
}

bool Win32ListBox::Remove(RowIndex row) {
  if (row >= Count()) return false;
  const std::optional<RowIndex> selected = Selection();
  if (!window_.AskIndex(LB_DELETESTRING, row)) return false;
  // Systems differ in what they leave selected.
  if (selected == row) Select(std::nullopt);
  if (selected && *selected > row) Select(*selected - 1);
  return true;
}

void Win32ListBox::Clear() { window_.Send(LB_RESETCONTENT); }

RowIndex Win32ListBox::Count() const { return window_.AskIndex(LB_GETCOUNT).value_or(0); }

std::string Win32ListBox::Text(RowIndex row) const {
  return row < Count() ? window_.AskText(LB_GETTEXTLEN, LB_GETTEXT, row) : std::string();
}

void* Win32ListBox::Data(RowIndex row) const {
  if (row >= Count()) return nullptr;
  return reinterpret_cast<void*>(window_.Send(LB_GETITEMDATA, row).value_or(0));
}

void Win32ListBox::SetData(RowIndex row, void* data) {
  if (row < Count()) window_.Send(LB_SETITEMDATA, row, reinterpret_cast<LPARAM>(data));
}

std::optional<RowIndex> Win32ListBox::Selection() const { return window_.AskIndex(LB_GETCURSEL); }

void Win32ListBox::Select(std::optional<RowIndex> row) {
  const bool exists = row && *row < Count();
  window_.Send(LB_SETCURSEL, exists ? *row : kNoRow);
}

void Win32ListBox::SetTabStops(std::span<const int> stops) {
  // The control takes its stops in dialog units; the port gives pixels.
  constexpr int kManyUnits = 4000;
  RECT measure = {0, 0, kManyUnits, 0};
  if (!window_ || MapDialogRect(dialog_, &measure) == FALSE || measure.right == 0) return;
  std::vector<int> units;
  units.reserve(stops.size());
  for (const int stop : stops) units.push_back(MulDiv(stop, kManyUnits, measure.right));
  window_.Send(LB_SETTABSTOPS, units.size(), reinterpret_cast<LPARAM>(units.data()));
}

}  // namespace pelora::windows
