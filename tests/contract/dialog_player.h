// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/dialog.h"
#include "platform/dialog_controller.h"

namespace pelora::contract {

/// The person in front of an open dialog: each operation does what hand and mouse would do and
/// returns when the dialog has dealt with it, notifications included. A control that is missing,
/// disabled or hidden, or not of the kind, does not react, as on a screen; so the operations answer
/// nothing.
class DialogPlayer {
 public:
  virtual ~DialogPlayer() = default;

  /// Types characters at the end of an edit control's text, one key each.
  virtual void Type(ControlId id, std::string_view text) = 0;
  /// Marks the whole text of an edit control and deletes it with one key.
  virtual void Erase(ControlId id) = 0;
  /// Clicks a button or check box.
  virtual void Click(ControlId id) = 0;
  /// Clicks a row of a list box; a row that does not exist stands for the empty space below.
  virtual void ClickListRow(ControlId id, RowIndex row) = 0;
  /// Opens a drop-down list and chooses a row that it does not show already.
  virtual void ChooseComboRow(ControlId id, RowIndex row) = 0;
  /// Clicks a cell of a list view, alone or with the key held that adds to the selection (or takes
  /// from it). A row that does not exist stands for the empty space below, a column that does not
  /// exist for the empty space beside the last one.
  virtual void ClickListViewCell(ControlId id, RowIndex row, std::size_t column, bool add) = 0;
  /// Double clicks a cell of a list view; the first click selects the row.
  virtual void DoubleClickListViewCell(ControlId id, RowIndex row, std::size_t column) = 0;
  /// Double clicks a cell with the right button.
  virtual void RightDoubleClickListViewCell(ControlId id, RowIndex row, std::size_t column) = 0;
  /// Clicks the head of a column.
  virtual void ClickListViewHead(ControlId id, std::size_t column) = 0;
  /// Presses Enter while an edit control of the dialog has the focus.
  virtual void PressEnter() = 0;
  /// Closes a modal dialog by its close box.
  virtual void CloseWindow() = 0;

  /// Looks at a control: the text in an edit control, the rows of a list box, and whether it can be
  /// used.
  [[nodiscard]] virtual std::string TextOf(ControlId id) = 0;
  [[nodiscard]] virtual std::vector<std::string> RowsOf(ControlId id) = 0;
  [[nodiscard]] virtual bool CanUse(ControlId id) = 0;
  /// Looks at a cell of a list view: in which role its text is drawn now.
  [[nodiscard]] virtual TextRole DrawnRole(ControlId id, RowIndex row, std::size_t column) = 0;
  /// Looks at a row of a list view: whether it is drawn as selected.
  [[nodiscard]] virtual bool IsDrawnSelected(ControlId id, RowIndex row) = 0;
  /// Looks at a column of a list view: how wide it is.
  [[nodiscard]] virtual int ColumnWidth(ControlId id, std::size_t column) = 0;
};

/// What the user does in one modal dialog, from the moment that it stands. When the script returns
/// the dialog has to be over.
using DialogScript = std::function<void(DialogPlayer&)>;

}  // namespace pelora::contract
