// SPDX-License-Identifier: Apache-2.0
#include "hosts/headless/headless_user.h"

#include <algorithm>
#include <array>

namespace pelora {
namespace {

constexpr std::array<std::string_view, 9> kDescriptions{
    "Done.",
    "The dialog is closed.",
    "The dialog has no such control.",
    "The control is of another kind.",
    "The control is hidden.",
    "The control is disabled.",
    "The field is read-only.",
    "The field takes digits only.",
    "There is no such row.",
};

/// Length of the UTF-8 character at the front of `text`, which is not empty.
std::size_t CharacterLength(std::string_view text) {
  constexpr unsigned kContinuationMask = 0xC0;
  constexpr unsigned kContinuation = 0x80;
  std::size_t length = 1;
  while (length < text.size() &&
         (static_cast<unsigned char>(text[length]) & kContinuationMask) == kContinuation) {
    ++length;
  }
  return length;
}

bool IsDigit(std::string_view character) {
  return character.size() == 1 && character.front() >= '0' && character.front() <= '9';
}

}  // namespace

std::string_view Describe(UserAnswer answer) {
  return kDescriptions.at(static_cast<std::size_t>(answer));
}

UserAnswer HeadlessUser::Reach(ControlId id) {
  if (!dialog_.IsOpen() || dialog_.Result()) return UserAnswer::kDialogClosed;
  const HeadlessControl* control = dialog_.Find(id);
  if (control == nullptr) return UserAnswer::kNoSuchControl;
  if (!control->shown) return UserAnswer::kHidden;
  return control->enabled ? UserAnswer::kDone : UserAnswer::kDisabled;
}

UserAnswer HeadlessUser::TypeText(ControlId id, std::string_view text) {
  UserAnswer answer = UserAnswer::kDone;
  while (!text.empty()) {
    // Asked again for each key: a notification may disable the control or end the dialog.
    if (const UserAnswer reach = Reach(id); reach != UserAnswer::kDone) return reach;
    HeadlessControl& control = *dialog_.Find(id);
    if (!control.IsEdit()) return UserAnswer::kWrongKind;
    if (control.IsReadOnly()) return UserAnswer::kReadOnly;
    const std::string_view character = text.substr(0, CharacterLength(text));
    text.remove_prefix(character.size());
    if (control.TakesDigitsOnly() && !IsDigit(character)) {
      answer = UserAnswer::kCharactersRefused;
      continue;
    }
    control.text += character;
    dialog_.Notify(id, ControlNotification::kEditChange);
  }
  return answer;
}

UserAnswer HeadlessUser::EraseText(ControlId id) {
  if (const UserAnswer reach = Reach(id); reach != UserAnswer::kDone) return reach;
  HeadlessControl& control = *dialog_.Find(id);
  if (!control.IsEdit()) return UserAnswer::kWrongKind;
  if (control.IsReadOnly()) return UserAnswer::kReadOnly;
  if (control.text.empty()) return UserAnswer::kDone;
  control.text.clear();
  dialog_.Notify(id, ControlNotification::kEditChange);
  return UserAnswer::kDone;
}

UserAnswer HeadlessUser::Click(ControlId id) {
  if (const UserAnswer reach = Reach(id); reach != UserAnswer::kDone) return reach;
  HeadlessControl& control = *dialog_.Find(id);
  if (!control.IsCheckBox() && !control.IsPushButton()) return UserAnswer::kWrongKind;
  control.CycleCheck();
  dialog_.Notify(id, ControlNotification::kClicked);
  return UserAnswer::kDone;
}

UserAnswer HeadlessUser::SelectListRow(ControlId id, RowIndex row) {
  if (const UserAnswer reach = Reach(id); reach != UserAnswer::kDone) return reach;
  HeadlessListBox* list = dialog_.Find(id)->list_box.get();
  if (list == nullptr) return UserAnswer::kWrongKind;
  if (row >= list->Count()) return UserAnswer::kNoSuchRow;
  if (list->Selection() == row) return UserAnswer::kDone;
  list->Select(row);
  dialog_.Notify(id, ControlNotification::kSelectionChange);
  return UserAnswer::kDone;
}

UserAnswer HeadlessUser::SelectComboRow(ControlId id, RowIndex row) {
  if (const UserAnswer reach = Reach(id); reach != UserAnswer::kDone) return reach;
  HeadlessComboBox* combo = dialog_.Find(id)->combo_box.get();
  if (combo == nullptr) return UserAnswer::kWrongKind;
  if (row >= combo->Count()) return UserAnswer::kNoSuchRow;
  if (combo->Selection() == row) return UserAnswer::kDone;
  combo->Select(row);
  dialog_.Notify(id, ControlNotification::kSelectionChange);
  return UserAnswer::kDone;
}

UserAnswer HeadlessUser::ClickListViewCell(ControlId id, RowIndex row, std::size_t column,
                                           bool add) {
  if (const UserAnswer reach = Reach(id); reach != UserAnswer::kDone) return reach;
  HeadlessListView* view = dialog_.Find(id)->list_view.get();
  if (view == nullptr) return UserAnswer::kWrongKind;
  const bool hit = row < view->RowCount() && view->Reacts(column);
  if (!add) {
    for (RowIndex other = 0; other < view->RowCount(); ++other) {
      if (!hit || other != row) view->SetSelected(other, false);
    }
  }
  if (hit) view->SetSelected(row, !add || !view->IsSelected(row));
  return row < view->RowCount() ? UserAnswer::kDone : UserAnswer::kNoSuchRow;
}

UserAnswer HeadlessUser::DoubleClickListViewCell(ControlId id, RowIndex row, std::size_t column) {
  const UserAnswer clicked = ClickListViewCell(id, row, column, false);
  if (clicked != UserAnswer::kDone) return clicked;
  if (const UserAnswer reach = Reach(id); reach != UserAnswer::kDone) return reach;
  if (dialog_.Find(id)->list_view->Reacts(column)) {
    dialog_.controller().OnListViewDoubleClick(id, row);
  }
  return UserAnswer::kDone;
}

UserAnswer HeadlessUser::PressEnter() {
  if (!dialog_.IsOpen() || dialog_.Result()) return UserAnswer::kDialogClosed;
  const auto& controls = dialog_.controls();
  const auto button = std::ranges::find_if(controls, &HeadlessControl::IsDefaultButton);
  if (button != controls.end()) return Click(button->item.id);
  if (dialog_.role() != HeadlessDialog::Role::kModal) return UserAnswer::kNoSuchControl;
  dialog_.Notify(static_cast<ControlId>(kDialogOk), ControlNotification::kClicked);
  return UserAnswer::kDone;
}

UserAnswer HeadlessUser::CloseWindow() {
  if (!dialog_.IsOpen() || dialog_.Result()) return UserAnswer::kDialogClosed;
  if (dialog_.role() != HeadlessDialog::Role::kModal) return UserAnswer::kWrongKind;
  const auto cancel = static_cast<ControlId>(kDialogCancel);
  if (dialog_.Find(cancel) != nullptr && !dialog_.IsEnabled(cancel)) return UserAnswer::kDisabled;
  dialog_.Notify(cancel, ControlNotification::kClicked);
  return UserAnswer::kDone;
}

}  // namespace pelora
