// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPointer>
#include <QWidget>

#include "tests/contract/dialog_player.h"

namespace pelora::contract {

/// The person in front of a dialog of native widgets: mouse and keyboard events go to the widgets
/// of the controls, which are found below `root` by their numbers.
class QtPlayer final : public DialogPlayer {
 public:
  explicit QtPlayer(QWidget& root) : root_(&root) {}

  void Type(ControlId id, std::string_view text) override;
  void Erase(ControlId id) override;
  void Click(ControlId id) override;
  void ClickListRow(ControlId id, RowIndex row) override;
  void ChooseComboRow(ControlId id, RowIndex row) override;
  void ClickListViewCell(ControlId id, RowIndex row, std::size_t column, bool add) override;
  void DoubleClickListViewCell(ControlId id, RowIndex row, std::size_t column) override;
  void RightDoubleClickListViewCell(ControlId id, RowIndex row, std::size_t column) override;
  void ClickListViewHead(ControlId id, std::size_t column) override;
  void PressEnter() override;
  void CloseWindow() override;
  [[nodiscard]] std::string TextOf(ControlId id) override;
  [[nodiscard]] std::vector<std::string> RowsOf(ControlId id) override;
  [[nodiscard]] bool CanUse(ControlId id) override { return Find<QWidget>(id) != nullptr; }
  [[nodiscard]] TextRole DrawnRole(ControlId id, RowIndex row, std::size_t column) override;
  [[nodiscard]] bool IsDrawnSelected(ControlId id, RowIndex row) override;
  [[nodiscard]] int ColumnWidth(ControlId id, std::size_t column) override;

 private:
  /// The control's widget if it is on the screen and of the kind; else null.
  template <class Widget>
  [[nodiscard]] Widget* Find(ControlId id) const;

  QPointer<QWidget> root_;
};

}  // namespace pelora::contract
