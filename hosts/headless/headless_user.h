// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "hosts/headless/headless_dialog.h"

namespace pelora {

/// What became of an action of the user.
enum class UserAnswer : std::uint8_t {
  kDone,
  kDialogClosed,
  kNoSuchControl,
  kWrongKind,
  kHidden,
  kDisabled,
  kReadOnly,
  /// The text was typed without the characters that the control does not take.
  kCharactersRefused,
  kNoSuchRow,
};

/// The answer as one line for a person: why nothing, or not everything, happened.
[[nodiscard]] std::string_view Describe(UserAnswer answer);

/// Plays the person in front of a dialog in memory. An action that a screen would not let anyone do
/// is refused, changes nothing and says why; otherwise the dialog's controller has been told
/// everything when the action returns.
class HeadlessUser {
 public:
  explicit HeadlessUser(HeadlessDialog& dialog) : dialog_(dialog) {}

  [[nodiscard]] HeadlessDialog& dialog() { return dialog_; }

  /// Types characters at the end of an edit control's text, one key and one notification each.
  UserAnswer TypeText(ControlId id, std::string_view text);
  /// Marks an edit control's whole text and deletes it with one key.
  UserAnswer EraseText(ControlId id);
  /// Clicks a button or check box. An automatic box changes before its click is reported.
  UserAnswer Click(ControlId id);
  /// A row that is selected already stays so, without a report.
  UserAnswer SelectListRow(ControlId id, RowIndex row);
  UserAnswer SelectComboRow(ControlId id, RowIndex row);
  /// Clicks a cell of a list view. Alone (`add` false) it leaves just that row selected; with `add`
  /// it selects or unselects the row beside the others. Where rows are not selected over their full
  /// width only the first column selects; a click elsewhere, to the right of the last column and
  /// below the last row unselects all.
  UserAnswer ClickListViewCell(ControlId id, RowIndex row, std::size_t column, bool add);
  UserAnswer DoubleClickListViewCell(ControlId id, RowIndex row, std::size_t column);
  /// Presses Enter: a click on the default button; on `kDialogOk` in a modal dialog that has none.
  UserAnswer PressEnter();
  /// Closes a modal dialog by its close box: a click on `kDialogCancel`, which need not be a
  /// control.
  UserAnswer CloseWindow();

 private:
  /// Whether the control can be acted on at all.
  [[nodiscard]] UserAnswer Reach(ControlId id);

  HeadlessDialog& dialog_;
};

}  // namespace pelora
