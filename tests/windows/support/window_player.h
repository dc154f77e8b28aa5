// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/windows/dialogs/control_window.h"
#include "tests/contract/dialog_player.h"

namespace pelora::windows::test {

/// Handles every message that waits on this thread.
void HandleWaitingMessages();

/// The person in front of a dialog window: sends its controls what mouse and keyboard would send
/// them. Controls that a person could not reach (disabled, hidden) get nothing.
class WindowPlayer final : public contract::DialogPlayer {
 public:
  explicit WindowPlayer(HWND dialog) : dialog_(dialog) {}

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
  [[nodiscard]] bool CanUse(ControlId id) override;
  [[nodiscard]] TextRole DrawnRole(ControlId id, RowIndex row, std::size_t column) override;
  [[nodiscard]] bool IsDrawnSelected(ControlId id, RowIndex row) override;
  [[nodiscard]] int ColumnWidth(ControlId id, std::size_t column) override;

 private:
  [[nodiscard]] ControlWindow Reachable(ControlId id, ControlKind kind) const;

  HWND dialog_;
};

}  // namespace pelora::windows::test
