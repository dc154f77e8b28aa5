// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <vector>

#include "platform/dialog.h"
#include "platform/dialog_controller.h"

namespace pelora {

/// A list view in memory.
class HeadlessListView final : public IListView {
 public:
  struct Column {
    std::string title;
    int width = 0;
  };
  /// Is told of every change of a row's state or text.
  using ChangeListener = std::function<void(const ListViewItemChange&)>;

  explicit HeadlessListView(ChangeListener listener) : listener_(std::move(listener)) {}

  void SetFullRowSelect(bool full) override { full_row_select_ = full; }
  void InsertColumn(std::size_t column, std::string_view title, int width) override;
  void InsertRow(RowIndex row, std::string_view text) override;
  [[nodiscard]] RowIndex RowCount() const override { return rows_.size(); }
  [[nodiscard]] std::string Text(RowIndex row, std::size_t column) const override;
  void SetText(RowIndex row, std::size_t column, std::string_view text) override;
  [[nodiscard]] bool IsSelected(RowIndex row) const override;
  void SetSelected(RowIndex row, bool selected) override;

  [[nodiscard]] bool full_row_select() const { return full_row_select_; }
  /// Whether a click on a row reaches it in this column.
  [[nodiscard]] bool Reacts(std::size_t column) const {
    return column == 0 || (full_row_select_ && column < columns_.size());
  }
  [[nodiscard]] const std::vector<Column>& columns() const { return columns_; }

 private:
  struct Row {
    std::vector<std::string> texts;
    bool selected = false;
  };

  ChangeListener listener_;
  bool full_row_select_ = false;
  std::vector<Column> columns_;
  std::vector<Row> rows_;
};

}  // namespace pelora
