// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStyledItemDelegate>
#include <QTreeWidget>

#include "hosts/console/dialogs/dialog_control.h"
#include "hosts/console/text/plain_text.h"

namespace pelora::console {

/// Rows under column heads, which share what the list has more or less of its width than before. A
/// double click is one of the left button.
class ReportView final : public QTreeWidget {
 public:
  using QTreeWidget::QTreeWidget;

 protected:
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
};

/// Rows of texts under column heads, which stay where they are and sort nothing. Every change of a
/// row's selection is reported, whoever made it.
class ListViewControl final : public DialogControl, private IListView {
 public:
  ListViewControl(const resources::DialogItem& item, QWidget& parent, ControlEvents& events);

  [[nodiscard]] IListView* ListView() override { return this; }
  [[nodiscard]] Stretching stretching() const override {
    return {.across = Growth::kGrows, .down = Growth::kGrows};
  }
  [[nodiscard]] TextRole RoleOf(RowIndex row, std::size_t column) const;

 private:
  void SetFullRowSelect(bool full) override;
  void InsertColumn(std::size_t column, std::string_view title, int width) override;
  void InsertRow(RowIndex row, std::string_view text) override;
  [[nodiscard]] RowIndex RowCount() const override;
  [[nodiscard]] std::string Text(RowIndex row, std::size_t column) const override;
  void SetText(RowIndex row, std::size_t column, std::string_view text) override;
  [[nodiscard]] bool IsSelected(RowIndex row) const override;
  void SetSelected(RowIndex row, bool selected) override;

  using DialogControl::SetText;
  using DialogControl::Text;
  [[nodiscard]] QTreeWidgetItem* Item(RowIndex row) const;
  [[nodiscard]] bool HasColumn(std::size_t column) const;
  void Report(const QItemSelection& rows, bool selected);

  ReportView& view_;
};

/// Asks the dialog's controller how each cell is to be drawn.
class TextRoleDelegate final : public QStyledItemDelegate {
 public:
  TextRoleDelegate(const ListViewControl& control, QObject* parent)
      : QStyledItemDelegate(parent), control_(control) {}

  [[nodiscard]] QString displayText(const QVariant& value, const QLocale& locale) const override {
    return Readable(QStyledItemDelegate::displayText(value, locale));
  }

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

 private:
  const ListViewControl& control_;
};

}  // namespace pelora::console
