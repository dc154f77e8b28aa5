// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/support/window_player.h"

#include "hosts/windows/values/wide_text.h"
#include "tests/windows/support/drawn_cells.h"

namespace pelora::windows::test {
namespace {

LPARAM PointOf(const RECT& area) {
  return MAKELPARAM((area.left + area.right) / 2, (area.top + area.bottom) / 2);
}

/// Presses and releases the mouse. The release waits already when the press comes: controls may
/// look out for it before they return.
void PressMouse(HWND window, UINT press, LPARAM point, WPARAM keys = 0) {
  PostMessageW(window, WM_LBUTTONUP, keys, point);
  SendMessageW(window, press, keys | MK_LBUTTON, point);
  HandleWaitingMessages();
}

RECT ClientArea(HWND window) {
  RECT area = {};
  GetClientRect(window, &area);
  return area;
}

/// Space below the last row.
RECT LowerEdge(HWND window) {
  RECT area = ClientArea(window);
  area.top = area.bottom - 2;
  return area;
}

RECT CellArea(const ControlWindow& view, RowIndex row, std::size_t column) {
  if (row >= view.AskIndex(LVM_GETITEMCOUNT).value_or(0)) return LowerEdge(view.window());
  view.Send(LVM_ENSUREVISIBLE, row, FALSE);
  RECT area = {};
  area.left = LVIR_LABEL;
  area.top = static_cast<LONG>(column);
  const UINT message = column == 0 ? LVM_GETITEMRECT : LVM_GETSUBITEMRECT;
  view.Send(message, row, reinterpret_cast<LPARAM>(&area));
  return area;
}

}  // namespace

void HandleWaitingMessages() {
  MSG message = {};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

ControlWindow WindowPlayer::Reachable(ControlId id, ControlKind kind) const {
  const ControlWindow control = ControlWindow(dialog_, id).If(kind);
  const bool reachable =
      IsWindowVisible(control.window()) != FALSE && IsWindowEnabled(control.window()) != FALSE;
  return reachable ? control : ControlWindow();
}

void WindowPlayer::Type(ControlId id, std::string_view text) {
  const ControlWindow edit = Reachable(id, ControlKind::kEdit);
  const RowIndex end = edit.AskIndex(WM_GETTEXTLENGTH).value_or(0);
  edit.Send(EM_SETSEL, end, static_cast<LPARAM>(end));
  for (const wchar_t unit : ToWide(text)) edit.Send(WM_CHAR, unit, 1);
}

void WindowPlayer::Erase(ControlId id) {
  const ControlWindow edit = Reachable(id, ControlKind::kEdit);
  edit.Send(EM_SETSEL, 0, -1);
  edit.Send(WM_KEYDOWN, VK_DELETE, 1);
}

void WindowPlayer::Click(ControlId id) {
  if (const ControlWindow button = Reachable(id, ControlKind::kButton)) {
    PressMouse(button.window(), WM_LBUTTONDOWN, PointOf(ClientArea(button.window())));
  }
}

void WindowPlayer::ClickListRow(ControlId id, RowIndex row) {
  const ControlWindow list = Reachable(id, ControlKind::kListBox);
  if (!list) return;
  RECT area = LowerEdge(list.window());
  list.Send(LB_SETTOPINDEX, row);
  list.Send(LB_GETITEMRECT, row, reinterpret_cast<LPARAM>(&area));
  PressMouse(list.window(), WM_LBUTTONDOWN, PointOf(area));
}

void WindowPlayer::ChooseComboRow(ControlId id, RowIndex row) {
  const ControlWindow combo = Reachable(id, ControlKind::kComboBox);
  if (!combo) return;
  COMBOBOXINFO info = {};
  info.cbSize = sizeof(info);
  GetComboBoxInfo(combo.window(), &info);
  combo.Send(CB_SHOWDROPDOWN, TRUE);
  const ControlWindow list(info.hwndList);
  RECT area = {};
  list.Send(LB_SETTOPINDEX, row);
  list.Send(LB_GETITEMRECT, row, reinterpret_cast<LPARAM>(&area));
  // The list follows the mouse and takes the row under it when the button is released.
  list.Send(WM_MOUSEMOVE, 0, PointOf(area));
  PressMouse(list.window(), WM_LBUTTONDOWN, PointOf(area));
}

void WindowPlayer::ClickListViewCell(ControlId id, RowIndex row, std::size_t column, bool add) {
  if (const ControlWindow view = Reachable(id, ControlKind::kListView)) {
    PressMouse(view.window(), WM_LBUTTONDOWN, PointOf(CellArea(view, row, column)),
               add ? MK_CONTROL : 0);
  }
}

void WindowPlayer::DoubleClickListViewCell(ControlId id, RowIndex row, std::size_t column) {
  const ControlWindow view = Reachable(id, ControlKind::kListView);
  if (!view) return;
  const LPARAM point = PointOf(CellArea(view, row, column));
  PressMouse(view.window(), WM_LBUTTONDOWN, point);
  PressMouse(view.window(), WM_LBUTTONDBLCLK, point);
}

void WindowPlayer::PressEnter() {
  HWND edit = FindWindowExW(dialog_, nullptr, L"Edit", nullptr);
  MSG key = {
      .hwnd = edit, .message = WM_KEYDOWN, .wParam = VK_RETURN, .lParam = 1, .time = 0, .pt = {}};
  SetFocus(edit);
  IsDialogMessageW(dialog_, &key);
}

void WindowPlayer::CloseWindow() {
  SendMessageW(dialog_, WM_SYSCOMMAND, SC_CLOSE, 0);
  HandleWaitingMessages();
}

TextRole WindowPlayer::DrawnRole(ControlId id, RowIndex row, std::size_t column) {
  const ControlWindow view(dialog_, id);
  return DrawnTextColor(dialog_, view.window(), row, column) == RGB(192, 192, 192)
             ? TextRole::kMuted
             : TextRole::kNormal;
}

}  // namespace pelora::windows::test
