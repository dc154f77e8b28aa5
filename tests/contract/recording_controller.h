// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/dialog_controller.h"

namespace pelora::contract {

/// A controller that writes down what it is told, one line each:
///
///   init
///   clicked ID, selected ID, edited ID
///   row ROW of ID on, row ROW of ID off      a list view row's selection changed
///   double click on ROW of ID
///   page CODE
///   destroy
///
/// A test may have something done at each. What is told after the end fails the test.
class RecordingController final : public IDialogController {
 public:
  /// The dialog that is open; null before and after.
  [[nodiscard]] IDialog* dialog() const { return dialog_; }
  [[nodiscard]] const std::vector<std::string>& events() const { return events_; }
  /// The events since the last call.
  [[nodiscard]] std::vector<std::string> TakeEvents();

  std::function<void(IDialog&)> on_init;
  std::function<void(IDialog&, ControlId, ControlNotification)> on_command;
  std::function<std::int32_t(PageNotification)> on_page;
  std::function<TextRole(RowIndex, std::size_t)> text_role;

  std::int32_t OnInitDialog(IDialog& dialog) override;
  std::int32_t OnCommand(ControlId id, ControlNotification notification) override;
  void OnListViewItemChanged(ControlId id, const ListViewItemChange& change) override;
  void OnListViewDoubleClick(ControlId id, RowIndex row) override;
  [[nodiscard]] TextRole ListViewTextRole(ControlId id, RowIndex row,
                                          std::size_t column) const override;
  std::int32_t OnPageNotification(PageNotification notification) override;
  void OnDestroy() override;

 private:
  void Record(std::string event);

  IDialog* dialog_ = nullptr;
  bool destroyed_ = false;
  std::vector<std::string> events_;
};

}  // namespace pelora::contract
