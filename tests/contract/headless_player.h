// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/headless/headless_user.h"
#include "tests/contract/dialog_player.h"

namespace pelora::contract {

/// Plays the person in front of a dialog in memory.
class HeadlessPlayer final : public DialogPlayer {
 public:
  explicit HeadlessPlayer(HeadlessDialog& dialog) : user_(dialog) {}

  void Type(ControlId id, std::string_view text) override { user_.TypeText(id, text); }
  void Erase(ControlId id) override { user_.EraseText(id); }
  void Click(ControlId id) override { user_.Click(id); }
  void ClickListRow(ControlId id, RowIndex row) override { user_.SelectListRow(id, row); }
  void ChooseComboRow(ControlId id, RowIndex row) override { user_.SelectComboRow(id, row); }
  void ClickListViewCell(ControlId id, RowIndex row, std::size_t column, bool add) override {
    user_.ClickListViewCell(id, row, column, add);
  }
  void DoubleClickListViewCell(ControlId id, RowIndex row, std::size_t column) override {
    user_.DoubleClickListViewCell(id, row, column);
  }
  // Nobody is told of right clicks, and heads do nothing.
  void RightDoubleClickListViewCell(ControlId id, RowIndex row, std::size_t column) override {
    user_.ClickListViewCell(id, row, column, false);
  }
  void ClickListViewHead(ControlId /*id*/, std::size_t /*column*/) override {}
  void PressEnter() override { user_.PressEnter(); }
  void CloseWindow() override { user_.CloseWindow(); }
  [[nodiscard]] std::string TextOf(ControlId id) override { return user_.dialog().Text(id); }
  [[nodiscard]] std::vector<std::string> RowsOf(ControlId id) override {
    std::vector<std::string> rows;
    const IListBox& list = user_.dialog().ListBox(id);
    for (RowIndex row = 0; row < list.Count(); ++row) rows.push_back(list.Text(row));
    return rows;
  }
  [[nodiscard]] bool CanUse(ControlId id) override { return user_.dialog().IsEnabled(id); }
  // Nothing is drawn here: drawing is asking.
  [[nodiscard]] TextRole DrawnRole(ControlId id, RowIndex row, std::size_t column) override {
    return user_.dialog().controller().ListViewTextRole(id, row, column);
  }
  [[nodiscard]] bool IsDrawnSelected(ControlId id, RowIndex row) override {
    return user_.dialog().ListView(id).IsSelected(row);
  }
  [[nodiscard]] int ColumnWidth(ControlId id, std::size_t column) override {
    return user_.dialog().Find(id)->list_view->columns().at(column).width;
  }

 private:
  HeadlessUser user_;
};

}  // namespace pelora::contract
