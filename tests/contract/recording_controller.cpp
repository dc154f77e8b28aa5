// SPDX-License-Identifier: Apache-2.0
#include "tests/contract/recording_controller.h"

#include <gtest/gtest.h>

#include <utility>

namespace pelora::contract {
namespace {

std::string Name(ControlNotification notification) {
  switch (notification) {
    case ControlNotification::kClicked:
      return "clicked";
    case ControlNotification::kSelectionChange:
      return "selected";
    case ControlNotification::kEditChange:
      return "edited";
  }
  return "notification " + std::to_string(static_cast<int>(notification)) + " of";
}

}  // namespace

std::vector<std::string> RecordingController::TakeEvents() { return std::exchange(events_, {}); }

void RecordingController::Record(std::string event) {
  EXPECT_FALSE(destroyed_) << event << " was told after the end";
  events_.push_back(std::move(event));
}

std::int32_t RecordingController::OnInitDialog(IDialog& dialog) {
  Record("init");
  dialog_ = &dialog;
  if (on_init) on_init(dialog);
  return 0;
}

std::int32_t RecordingController::OnCommand(ControlId id, ControlNotification notification) {
  EXPECT_NE(dialog_, nullptr) << "a command came before the dialog stood";
  Record(Name(notification) + " " + std::to_string(id));
  if (on_command && dialog_ != nullptr) on_command(*dialog_, id, notification);
  return 0;
}

void RecordingController::OnListViewItemChanged(ControlId id, const ListViewItemChange& change) {
  if (!change.state_changed || change.was_selected == change.is_selected) return;
  Record("row " + std::to_string(change.row) + " of " + std::to_string(id) +
         (change.is_selected ? " on" : " off"));
}

void RecordingController::OnListViewDoubleClick(ControlId id, RowIndex row) {
  Record("double click on " + std::to_string(row) + " of " + std::to_string(id));
}

TextRole RecordingController::ListViewTextRole(ControlId /*id*/, RowIndex row,
                                               std::size_t column) const {
  EXPECT_FALSE(destroyed_) << "a cell was drawn after the end";
  return text_role ? text_role(row, column) : TextRole::kNormal;
}

std::int32_t RecordingController::OnPageNotification(PageNotification notification) {
  Record("page " + std::to_string(static_cast<std::int32_t>(notification)));
  return on_page ? on_page(notification) : 0;
}

void RecordingController::OnDestroy() {
  Record("destroy");
  destroyed_ = true;
  dialog_ = nullptr;
}

}  // namespace pelora::contract
