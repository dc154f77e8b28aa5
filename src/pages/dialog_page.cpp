// SPDX-License-Identifier: Apache-2.0
#include "pages/dialog_page.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "directory/exception_status.h"

namespace pelora {

CDialogPage::CDialogPage(DialogId dialog_template, std::string title)
    : template_(dialog_template), title_(std::move(title)) {}

std::int32_t CDialogPage::OnInitDialog(IDialog& dialog) {
  dialog_ = &dialog;
  return Guarded(E_UNEXPECTED, [this] { return InitDialog(); });
}

std::int32_t CDialogPage::OnCommand(ControlId id, ControlNotification notification) {
  const auto command = std::ranges::find_if(commands_, [&](const Command& row) {
    return row.control == id && row.notification == notification;
  });
  if (command == commands_.end()) return 0;
  return Guarded(0, command->handler);
}

void CDialogPage::OnListViewItemChanged(ControlId id, const ListViewItemChange& change) {
  (void)Guarded(0, [&] {
    ListViewItemChanged(id, change);
    return 0;
  });
}

void CDialogPage::OnListViewDoubleClick(ControlId id, RowIndex row) {
  (void)Guarded(0, [&] {
    ListViewDoubleClicked(id, row);
    return 0;
  });
}

std::int32_t CDialogPage::OnPageNotification(PageNotification notification) {
  return Guarded(kPageInvalidStay, [&] { return AnswerPage(notification); });
}

void CDialogPage::OnDestroy() { dialog_ = nullptr; }

void CDialogPage::Route(std::vector<Command> commands) {
  std::erase_if(commands, [this](const Command& command) { return Lacks(command.control); });
  commands_.reserve(commands_.size() + commands.size());
  std::ranges::move(commands, std::back_inserter(commands_));
}

void CDialogPage::RegisterRows(RowSource rows) { row_sources_.push_back(std::move(rows)); }

std::vector<FieldRow> CDialogPage::Rows() const {
  std::vector<FieldRow> rows;
  for (const RowSource& source : row_sources_) {
    for (FieldRow& row : source()) {
      if (!Lacks(row.control)) rows.push_back(std::move(row));
    }
  }
  return rows;
}

bool CDialogPage::Lacks(ControlId control) const {
  return std::ranges::find(lacking_controls_, control) != lacking_controls_.end();
}

std::int32_t CDialogPage::Guarded(std::int32_t on_exception,
                                  const std::function<std::int32_t()>& action) {
  try {
    return action();
  } catch (...) {
    ReportException(StatusOfException());
  }
  return on_exception;
}

}  // namespace pelora
