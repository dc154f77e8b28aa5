// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/support/window_player.h"

#include "hosts/windows/dialogs/win32_dialog.h"
#include "hosts/windows/values/wide_text.h"
#include "tests/windows/support/drawn_cells.h"

namespace pelora::windows::test {
namespace {

LPARAM PointOf(const RECT& area) {
  return MAKELPARAM((area.left + area.right) / 2, (area.top + area.bottom) / 2);
}

/// A button of the mouse: its messages and its key.
struct MouseButton {
  UINT press;
  UINT double_press;
  UINT release;
  WPARAM key;
};
constexpr MouseButton kLeft = {WM_LBUTTONDOWN, WM_LBUTTONDBLCLK, WM_LBUTTONUP, MK_LBUTTON};
constexpr MouseButton kRight = {WM_RBUTTONDOWN, WM_RBUTTONDBLCLK, WM_RBUTTONUP, MK_RBUTTON};

/// Presses and releases the mouse. The release waits already when the press comes: controls may
/// look out for it before they return.
void PressMouse(HWND window, UINT press, LPARAM point, WPARAM keys = 0,
                const MouseButton& button = kLeft) {
  PostMessageW(window, button.release, keys, point);
  SendMessageW(window, press, keys | button.key, point);
  HandleWaitingMessages();
}

void DoubleClick(HWND window, LPARAM point, const MouseButton& button) {
  PressMouse(window, button.press, point, 0, button);
  PressMouse(window, button.double_press, point, 0, button);
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

ControlWindow HeadOf(const ControlWindow& view) {
  return ControlWindow(reinterpret_cast<HWND>(view.Send(LVM_GETHEADER).value_or(0)));
}

RECT CellArea(const ControlWindow& view, RowIndex row, std::size_t column) {
  if (row >= view.AskIndex(LVM_GETITEMCOUNT).value_or(0)) return LowerEdge(view.window());
  view.Send(LVM_ENSUREVISIBLE, row, FALSE);
  RECT area = {};
  area.left = LVIR_LABEL;
  if (column >= HeadOf(view).AskIndex(HDM_GETITEMCOUNT).value_or(0)) {
    // Beside the last column.
    view.Send(LVM_GETITEMRECT, row, reinterpret_cast<LPARAM>(&area));
    area.right = ClientArea(view.window()).right;
    area.left = area.right - 2;
    return area;
  }
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
  if (view) DoubleClick(view.window(), PointOf(CellArea(view, row, column)), kLeft);
}

void WindowPlayer::RightDoubleClickListViewCell(ControlId id, RowIndex row, std::size_t column) {
  const ControlWindow view = Reachable(id, ControlKind::kListView);
  if (view) DoubleClick(view.window(), PointOf(CellArea(view, row, column)), kRight);
}

void WindowPlayer::ClickListViewHead(ControlId id, std::size_t column) {
  const ControlWindow view = Reachable(id, ControlKind::kListView);
  if (!view) return;
  RECT area = {};
  HeadOf(view).Send(HDM_GETITEMRECT, column, reinterpret_cast<LPARAM>(&area));
  PressMouse(HeadOf(view).window(), WM_LBUTTONDOWN, PointOf(area));
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

std::string WindowPlayer::TextOf(ControlId id) {
  return Win32Dialog(dialog_, DialogRole::kModal).Text(id);
}

std::vector<std::string> WindowPlayer::RowsOf(ControlId id) {
  Win32Dialog dialog(dialog_, DialogRole::kModal);
  const IListBox& list = dialog.ListBox(id);
  std::vector<std::string> rows;
  for (RowIndex row = 0; row < list.Count(); ++row) rows.push_back(list.Text(row));
  return rows;
}

bool WindowPlayer::CanUse(ControlId id) {
  return Win32Dialog(dialog_, DialogRole::kModal).IsEnabled(id);
}

TextRole WindowPlayer::DrawnRole(ControlId id, RowIndex row, std::size_t column) {
  const ControlWindow view(dialog_, id);
  return DrawnTextColor(dialog_, view.window(), row, column) == RGB(192, 192, 192)
             ? TextRole::kMuted
             : TextRole::kNormal;
}

bool WindowPlayer::IsDrawnSelected(ControlId id, RowIndex row) {
  const ControlWindow view(dialog_, id);
  const RECT cell = CellArea(view, row, 0);
  RedrawWindow(view.window(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
  // The right end of the row's first cell holds no text.
  HDC drawn = GetDC(view.window());
  const COLORREF ground = GetPixel(drawn, cell.right - 3, (cell.top + cell.bottom) / 2);
  ReleaseDC(view.window(), drawn);
  return ground != GetSysColor(COLOR_WINDOW);
}

int WindowPlayer::ColumnWidth(ControlId id, std::size_t column) {
  return static_cast<int>(
      ControlWindow(dialog_, id).AskIndex(LVM_GETCOLUMNWIDTH, column).value_or(0));
}

}  // namespace pelora::windows::test
