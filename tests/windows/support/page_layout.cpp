// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/support/page_layout.h"

#include "hosts/windows/dialogs/control_window.h"
#include "hosts/windows/values/wide_text.h"
#include "tests/windows/support/window_text.h"

namespace pelora::windows::test {
namespace {

struct Placed {
  HWND window;
  ControlKind kind;
  bool is_frame;
  RECT area;
  std::string name;
};

BOOL CALLBACK Collect(HWND window, LPARAM target) {
  const HWND dialog = GetParent(window);
  const ControlWindow control(window);
  if ((control.Style() & WS_VISIBLE) == 0) return TRUE;
  RECT area = {};
  GetWindowRect(window, &area);
  MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&area), 2);
  const bool is_frame =
      control.Kind() == ControlKind::kButton && (control.Style() & BS_TYPEMASK) == BS_GROUPBOX;
  reinterpret_cast<std::vector<Placed>*>(target)->push_back(
      {window, control.Kind(), is_frame, area,
       std::to_string(GetDlgCtrlID(window)) + " \"" + TextOfWindow(window) + '"'});
  return TRUE;
}

SIZE TextSize(const Placed& control) {
  const HDC device = GetDC(control.window);
  const auto font = reinterpret_cast<HFONT>(SendMessageW(control.window, WM_GETFONT, 0, 0));
  const HGDIOBJ before = SelectObject(device, font);
  const std::wstring text = ToWide(TextOfWindow(control.window));
  RECT area = {};
  DrawTextW(device, text.c_str(), -1, &area, DT_CALCRECT | DT_SINGLELINE);
  SelectObject(device, before);
  ReleaseDC(control.window, device);
  return {area.right, area.bottom};
}

/// Room that a control keeps from its text: the box of a check box, the border of a button.
LONG ReservedWidth(const Placed& control) {
  if (control.kind != ControlKind::kButton || control.is_frame) return 0;
  const DWORD type = ControlWindow(control.window).Style() & BS_TYPEMASK;
  const bool is_push_button = type == BS_PUSHBUTTON || type == BS_DEFPUSHBUTTON;
  return is_push_button ? 8 : GetSystemMetrics(SM_CXMENUCHECK) + 3;
}

bool ShowsItsText(const Placed& control) {
  if (control.kind == ControlKind::kButton) return true;
  if (control.kind != ControlKind::kStatic) return false;
  const DWORD type = ControlWindow(control.window).Style() & SS_TYPEMASK;
  return type != SS_ICON && type != SS_ETCHEDHORZ;
}

}  // namespace

std::vector<std::string> ClippedControls(HWND dialog) {
  std::vector<Placed> controls;
  EnumChildWindows(dialog, &Collect, reinterpret_cast<LPARAM>(&controls));
  // The parts of a control are its own business.
  std::erase_if(controls,
                [dialog](const Placed& control) { return GetParent(control.window) != dialog; });
  RECT client = {};
  GetClientRect(dialog, &client);
  std::vector<std::string> clipped;
  for (const Placed& control : controls) {
    if (control.area.left < 0 || control.area.top < 0 || control.area.right > client.right ||
        control.area.bottom > client.bottom) {
      clipped.push_back(control.name + " reaches over the edge");
    }
    if (!ShowsItsText(control)) continue;
    const SIZE text = TextSize(control);
    if (text.cx + ReservedWidth(control) > control.area.right - control.area.left ||
        text.cy > control.area.bottom - control.area.top) {
      clipped.push_back(control.name + " has too much text");
    }
  }
  for (const Placed& one : controls) {
    for (const Placed& other : controls) {
      RECT common = {};
      if (&one >= &other || one.is_frame || other.is_frame) continue;
      if (IntersectRect(&common, &one.area, &other.area) != FALSE) {
        clipped.push_back(one.name + " overlaps " + other.name);
      }
    }
  }
  return clipped;
}

}  // namespace pelora::windows::test
