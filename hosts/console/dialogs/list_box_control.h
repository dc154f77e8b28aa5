// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QListWidget>
#include <QStyledItemDelegate>
#include <vector>

#include "hosts/console/dialogs/dialog_control.h"
#include "hosts/console/text/collation.h"
#include "hosts/console/text/plain_text.h"

namespace pelora::console {

/// What a row shows in place of its text, which stays what it is for the page; nothing: its text.
inline constexpr int kShownTextRole = Qt::UserRole + 1;
/// How much of a row's end its text leaves free, in dots, for what is said there; nothing: none.
inline constexpr int kKeptFreeRole = Qt::UserRole + 2;

/// Draws a row whose text is divided by tab characters in columns that begin at the tab stops.
/// Behind the last stop, and without any, columns are eight characters wide.
class TabStopDelegate final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  void SetTabStops(std::vector<int> stops) { stops_ = std::move(stops); }

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  [[nodiscard]] QString displayText(const QVariant& value, const QLocale& locale) const override {
    return Readable(QStyledItemDelegate::displayText(value, locale));
  }

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

 private:
  void PaintColumns(QPainter* painter, const QStyleOptionViewItem& option,
                    const QModelIndex& index) const;
  [[nodiscard]] int NextStop(int position, const QFontMetrics& metrics) const;

  std::vector<int> stops_;
};

/// A list in which, unless several rows can be selected, one stays selected once one is: clicking
/// it again does not deselect it. Letters that are typed lead to the row that shows them.
class RowList final : public QListWidget {
 public:
  using QListWidget::QListWidget;

  void keyboardSearch(const QString& letters) override;

 protected:
  [[nodiscard]] QItemSelectionModel::SelectionFlags selectionCommand(
      const QModelIndex& index, const QEvent* event) const override;
};

/// Of several selected rows the selection is the first; one that is removed leaves the others
/// selected.
class ListBoxControl final : public DialogControl, private IListBox {
 public:
  ListBoxControl(const resources::DialogItem& item, QWidget& parent, ControlEvents& events);

  [[nodiscard]] IListBox* ListBox() override { return this; }
  [[nodiscard]] Stretching stretching() const override {
    return {.across = Growth::kGrows, .down = Growth::kGrows};
  }

 private:
  std::optional<RowIndex> Add(std::string_view text) override;
  bool Remove(RowIndex row) override;
  void Clear() override;
  [[nodiscard]] RowIndex Count() const override;
  [[nodiscard]] std::string Text(RowIndex row) const override;
  [[nodiscard]] void* Data(RowIndex row) const override;
  void SetData(RowIndex row, void* data) override;
  [[nodiscard]] std::optional<RowIndex> Selection() const override;
  void Select(std::optional<RowIndex> row) override;
  void SetTabStops(std::span<const int> stops) override;

  using DialogControl::Text;
  [[nodiscard]] QListWidgetItem* Item(RowIndex row) const;
  void Deselect();

  RowList& list_;
  TabStopDelegate* delegate_;
  std::optional<Collation> order_;
  bool notifies_;
  bool changing_ = false;
};

}  // namespace pelora::console
