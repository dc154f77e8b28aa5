// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/support/control_lines.h"

#include <array>

#include "hosts/windows/dialogs/control_window.h"
#include "hosts/windows/values/wide_text.h"
#include "tests/windows/support/window_text.h"

namespace pelora::windows::test {
namespace {

std::string Quoted(const std::string& text) { return " \"" + text + '"'; }

std::string ButtonLine(const ControlWindow& button) {
  constexpr std::array kStates = {" unchecked", " checked", " indeterminate"};
  const std::string text = Quoted(TextOfWindow(button.window()));
  const DWORD type = button.Style() & BS_TYPEMASK;
  const auto state = static_cast<std::size_t>(button.Send(BM_GETCHECK).value_or(0)) % 3;
  switch (type) {
    case BS_GROUPBOX:
      return "frame" + text;
    case BS_PUSHBUTTON:
      return "button" + text;
    case BS_DEFPUSHBUTTON:
      return "default button" + text;
    case BS_AUTOCHECKBOX:
      return "check box" + text + kStates.at(state);
    case BS_AUTO3STATE:
      return "check box" + text + kStates.at(state) + " three-state";
    default:
      return "button of type " + std::to_string(type) + text;
  }
}

std::string EditLine(const ControlWindow& edit) {
  std::string line = "edit" + Quoted(TextOfWindow(edit.window()));
  if ((edit.Style() & ES_READONLY) != 0) line += " read-only";
  return line;
}

std::string ListBoxLine(const ControlWindow& list) {
  std::string line = "list box";
  const RowIndex count = list.AskIndex(LB_GETCOUNT).value_or(0);
  for (RowIndex row = 0; row < count; ++row) {
    const std::string text = Quoted(list.AskText(LB_GETTEXTLEN, LB_GETTEXT, row));
    line += list.Send(LB_GETSEL, row).value_or(0) > 0 ? " *" + text.substr(1) : text;
  }
  return line;
}

std::string ComboBoxLine(const ControlWindow& combo) {
  std::string line = "drop-down list";
  const auto selected = combo.AskIndex(CB_GETCURSEL);
  const RowIndex count = combo.AskIndex(CB_GETCOUNT).value_or(0);
  for (RowIndex row = 0; row < count; ++row) {
    const std::string text = Quoted(combo.AskText(CB_GETLBTEXTLEN, CB_GETLBTEXT, row));
    line += selected == row ? " *" + text.substr(1) : text;
  }
  return line;
}

std::string ColumnTitle(const ControlWindow& view, std::size_t column) {
  std::array<wchar_t, 100> text{};
  LVCOLUMNW asked = {};
  asked.mask = LVCF_TEXT;
  asked.pszText = text.data();
  asked.cchTextMax = static_cast<int>(text.size());
  view.Send(LVM_GETCOLUMNW, column, reinterpret_cast<LPARAM>(&asked));
  return ToNarrow(text.data());
}

std::string CellText(const ControlWindow& view, RowIndex row, std::size_t column) {
  std::array<wchar_t, 500> text{};
  LVITEMW asked = {};
  asked.iSubItem = static_cast<int>(column);
  asked.pszText = text.data();
  asked.cchTextMax = static_cast<int>(text.size());
  view.Send(LVM_GETITEMTEXTW, row, reinterpret_cast<LPARAM>(&asked));
  return ToNarrow(text.data());
}

std::string ListViewLine(const ControlWindow& view) {
  const HWND heads = ListView_GetHeader(view.window());
  const auto columns = static_cast<std::size_t>(Header_GetItemCount(heads));
  const RowIndex rows = view.AskIndex(LVM_GETITEMCOUNT).value_or(0);
  std::string line = "list view ";
  for (std::size_t column = 0; column < columns; ++column) {
    line += (column == 0 ? "" : "|") + ColumnTitle(view, column);
  }
  for (RowIndex row = 0; row < rows; ++row) {
    const bool selected = (view.Send(LVM_GETITEMSTATE, row, LVIS_SELECTED).value_or(0) & 2) != 0;
    line += selected ? " *" : " ";
    for (std::size_t column = 0; column < columns; ++column) {
      line += (column == 0 ? "" : "|") + CellText(view, row, column);
    }
  }
  return line;
}

std::string StaticLine(const ControlWindow& label) {
  const DWORD type = label.Style() & SS_TYPEMASK;
  // The text of a picture is the number of its resource.
  if (type == SS_ICON) return "icon";
  if (type == SS_ETCHEDHORZ) return "rule";
  return "label" + Quoted(TextOfWindow(label.window()));
}

std::string LineOfKind(const ControlWindow& control) {
  switch (control.Kind()) {
    case ControlKind::kButton:
      return ButtonLine(control);
    case ControlKind::kEdit:
      return EditLine(control);
    case ControlKind::kStatic:
      return StaticLine(control);
    case ControlKind::kListBox:
      return ListBoxLine(control);
    case ControlKind::kComboBox:
      return ComboBoxLine(control);
    case ControlKind::kListView:
      return ListViewLine(control);
    case ControlKind::kOther:
      return "unknown" + Quoted(TextOfWindow(control.window()));
  }
  return {};
}

std::string LineOf(HWND window) {
  const ControlWindow control(window);
  const int id = GetDlgCtrlID(window);
  std::string line = (id == -1 ? "-" : std::to_string(id)) + ' ' + LineOfKind(control);
  if ((control.Style() & WS_DISABLED) != 0) line += " disabled";
  if ((control.Style() & WS_VISIBLE) == 0) line += " hidden";
  return line;
}

}  // namespace

std::vector<std::string> ControlLines(HWND dialog) {
  std::vector<std::string> lines;
  for (HWND window = GetWindow(dialog, GW_CHILD); window != nullptr;
       window = GetWindow(window, GW_HWNDNEXT)) {
    lines.push_back(LineOf(window));
  }
  return lines;
}

}  // namespace pelora::windows::test
