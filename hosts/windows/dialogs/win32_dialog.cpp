// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/dialogs/win32_dialog.h"

#include "hosts/windows/values/wide_text.h"

namespace pelora::windows {
namespace {

constexpr DWORD kButtonTypeMask = 0xF;

bool IsCheckBoxType(DWORD type) {
  return type == BS_CHECKBOX || type == BS_AUTOCHECKBOX || type == BS_3STATE ||
         type == BS_AUTO3STATE;
}

}  // namespace

void Win32Dialog::Forget() {
  window_ = nullptr;
  for (auto& [id, list] : list_boxes_) list = Win32ListBox({}, nullptr);
  for (auto& [id, list] : combo_boxes_) list = Win32ComboBox({});
  for (auto& [id, list] : list_views_) list = Win32ListView({});
}

std::string Win32Dialog::Text(ControlId id) const {
  const ControlWindow control = Control(id);
  const RowIndex length = control.AskIndex(WM_GETTEXTLENGTH).value_or(0);
  std::wstring text(length + 1, L'\0');
  text.resize(
      control.AskIndex(WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data())).value_or(0));
  return ToNarrow(text);
}

void Win32Dialog::SetText(ControlId id, std::string_view text) {
  const ControlWindow control = Control(id);
  control.SendText(WM_SETTEXT, 0, text);
  // An edit control of several lines keeps quiet about a text that it is given.
  const bool is_quiet =
      control.Kind() == ControlKind::kEdit && (control.Style() & ES_MULTILINE) != 0;
  if (is_quiet) {
    SendMessageW(window_, WM_COMMAND, MAKEWPARAM(id, EN_CHANGE),
                 reinterpret_cast<LPARAM>(control.window()));
  }
}

bool Win32Dialog::IsEnabled(ControlId id) const {
  return (Control(id).Style() & WS_DISABLED) == 0 && Control(id);
}

void Win32Dialog::SetEnabled(ControlId id, bool enabled) {
  const ControlWindow control = Control(id);
  if (!control) return;
  // A disabled control would keep the keys to itself: the focus goes to the next one.
  const bool loses_focus = !enabled && GetFocus() == control.window();
  if (loses_focus) SendMessageW(window_, WM_NEXTDLGCTL, 0, FALSE);
  EnableWindow(control.window(), enabled);
}

bool Win32Dialog::IsShown(ControlId id) const { return (Control(id).Style() & WS_VISIBLE) != 0; }

void Win32Dialog::SetShown(ControlId id, bool shown) {
  if (const ControlWindow control = Control(id)) {
    ShowWindow(control.window(), shown ? SW_SHOW : SW_HIDE);
  }
}

ControlWindow Win32Dialog::CheckBox(ControlId id) const {
  const ControlWindow button = Control(id).If(ControlKind::kButton);
  return IsCheckBoxType(button.Style() & kButtonTypeMask) ? button : ControlWindow();
}

CheckState Win32Dialog::Check(ControlId id) const {
  return static_cast<CheckState>(CheckBox(id).Send(BM_GETCHECK).value_or(BST_UNCHECKED));
}

void Win32Dialog::SetCheck(ControlId id, CheckState state) {
  CheckBox(id).Send(BM_SETCHECK, static_cast<WPARAM>(state));
}

ButtonStyle Win32Dialog::Style(ControlId id) const {
  const DWORD type = CheckBox(id).Style() & kButtonTypeMask;
  const bool has_three = type == BS_3STATE || type == BS_AUTO3STATE;
  return has_three ? ButtonStyle::kAutoThreeState : ButtonStyle::kAutoCheckBox;
}

void Win32Dialog::SetStyle(ControlId id, ButtonStyle style) {
  CheckBox(id).Send(BM_SETSTYLE, static_cast<WPARAM>(style), TRUE);
}

IListBox& Win32Dialog::ListBox(ControlId id) {
  return list_boxes_.try_emplace(id, Control(id).If(ControlKind::kListBox), window_).first->second;
}

IComboBox& Win32Dialog::ComboBox(ControlId id) {
  return combo_boxes_.try_emplace(id, Control(id).If(ControlKind::kComboBox)).first->second;
}

IListView& Win32Dialog::ListView(ControlId id) {
  return list_views_.try_emplace(id, Control(id).If(ControlKind::kListView)).first->second;
}

int Win32Dialog::ClientWidth(ControlId id) const {
  RECT area = {};
  const ControlWindow control = Control(id);
  return control && GetClientRect(control.window(), &area) != FALSE ? area.right : 0;
}

void Win32Dialog::SetPageModified(bool modified) {
  if (role_ != DialogRole::kPage || window_ == nullptr) return;
  SendMessageW(GetParent(window_), modified ? PSM_CHANGED : PSM_UNCHANGED,
               reinterpret_cast<WPARAM>(window_), 0);
}

void Win32Dialog::End(std::int32_t result) {
  if (role_ == DialogRole::kModal && window_ != nullptr) EndDialog(window_, result);
}

HWND WindowOf(IDialog* dialog) {
  const auto* const own = dynamic_cast<const Win32Dialog*>(dialog);
  return own == nullptr ? nullptr : own->window();
}

HWND OwnerWindow(IDialog* dialog) {
  const HWND window = WindowOf(dialog);
  return window == nullptr ? GetActiveWindow() : window;
}

}  // namespace pelora::windows
