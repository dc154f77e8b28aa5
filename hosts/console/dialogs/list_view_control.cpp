// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/dialogs/list_view_control.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <algorithm>
#include <vector>

#include "hosts/console/dialogs/control_styles.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"

namespace pelora::console {
namespace {

constexpr QRgb kMutedOnLight = qRgb(192, 192, 192);
constexpr QRgb kMutedOnDark = qRgb(110, 110, 110);
constexpr int kDarkBelow = 128;

}  // namespace

void TextRoleDelegate::initStyleOption(QStyleOptionViewItem* option,
                                       const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  const TextRole role =
      control_.RoleOf(static_cast<RowIndex>(index.row()), static_cast<std::size_t>(index.column()));
  if (role != TextRole::kMuted) return;
  const bool dark = option->palette.color(QPalette::Base).lightness() < kDarkBelow;
  option->palette.setColor(QPalette::Text, QColor(dark ? kMutedOnDark : kMutedOnLight));
}

void ReportView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) return QTreeWidget::mouseDoubleClickEvent(event);
  mousePressEvent(event);
}

void ReportView::resizeEvent(QResizeEvent* event) {
  QTreeWidget::resizeEvent(event);
  const int before = event->oldSize().width();
  const int now = event->size().width();
  if (before <= 0 || before == now) return;
  int end = 0;
  int new_end = 0;
  for (int column = 0; column < columnCount(); ++column) {
    // By its ends, so that rounding does not add up.
    end += columnWidth(column);
    const int moved = end * now / before;
    setColumnWidth(column, moved - new_end);
    new_end = moved;
  }
}

ListViewControl::ListViewControl(const resources::DialogItem& item, QWidget& parent,
                                 ControlEvents& events)
    : DialogControl(item, *new ReportView(&parent), events),
      view_(static_cast<ReportView&>(widget())) {
  const bool single = (item.style & style::kListViewSingleSelection) != 0;
  view_.setSelectionMode(single ? QAbstractItemView::SingleSelection
                                : QAbstractItemView::ExtendedSelection);
  view_.setRootIsDecorated(false);
  view_.setUniformRowHeights(true);
  view_.setColumnCount(0);
  view_.header()->setStretchLastSection(false);
  view_.header()->setSectionsMovable(false);
  view_.header()->setSectionsClickable(false);
  view_.setItemDelegate(new TextRoleDelegate(*this, &view_));
  QObject::connect(view_.selectionModel(), &QItemSelectionModel::selectionChanged, &view_,
                   [this](const QItemSelection& selected, const QItemSelection& deselected) {
                     Report(deselected, false);
                     Report(selected, true);
                   });
  QObject::connect(&view_, &QTreeWidget::doubleClicked, &view_, [this](const QModelIndex& index) {
    // Beside the last column there is no cell.
    if (!index.isValid()) return;
    this->events().OnListViewDoubleClick(id(), static_cast<RowIndex>(index.row()));
  });
}

void ListViewControl::Report(const QItemSelection& rows, bool selected) {
  std::vector<int> changed;
  for (const QItemSelectionRange& range : rows) {
    for (int row = range.top(); row <= range.bottom(); ++row) changed.push_back(row);
  }
  // A row may come once for each of its cells.
  std::ranges::sort(changed);
  changed.erase(std::unique(changed.begin(), changed.end()), changed.end());
  for (const int row : changed) {
    events().OnListViewItemChanged(id(), {.row = static_cast<RowIndex>(row),
                                          .state_changed = true,
                                          .was_selected = !selected,
                                          .is_selected = selected});
  }
}

TextRole ListViewControl::RoleOf(RowIndex row, std::size_t column) const {
  return events().ListViewTextRole(id(), row, column);
}

QTreeWidgetItem* ListViewControl::Item(RowIndex row) const {
  return row < RowCount() ? view_.topLevelItem(static_cast<int>(row)) : nullptr;
}

bool ListViewControl::HasColumn(std::size_t column) const {
  return column < static_cast<std::size_t>(view_.columnCount());
}

void ListViewControl::SetFullRowSelect(bool full) {
  view_.setSelectionBehavior(full ? QAbstractItemView::SelectRows : QAbstractItemView::SelectItems);
  view_.setAllColumnsShowFocus(full);
}

void ListViewControl::InsertColumn(std::size_t column, std::string_view title, int width) {
  const int count = view_.columnCount();
  const int index = HasColumn(column) ? static_cast<int>(column) : count;
  view_.setColumnCount(count + 1);
  for (int moved = count; moved > index; --moved) {
    view_.headerItem()->setText(moved, view_.headerItem()->text(moved - 1));
    view_.setColumnWidth(moved, view_.columnWidth(moved - 1));
    for (int row = 0; row < view_.topLevelItemCount(); ++row) {
      QTreeWidgetItem* item = view_.topLevelItem(row);
      item->setText(moved, item->text(moved - 1));
      item->setText(moved - 1, QString());
    }
  }
  view_.headerItem()->setText(index, ToQString(title));
  view_.setColumnWidth(index, width);
}

void ListViewControl::InsertRow(RowIndex row, std::string_view text) {
  const RowIndex at = std::min(row, RowCount());
  view_.insertTopLevelItem(static_cast<int>(at), new QTreeWidgetItem(QStringList{QString()}));
  SetText(at, 0, text);
}

RowIndex ListViewControl::RowCount() const {
  return static_cast<RowIndex>(view_.topLevelItemCount());
}

std::string ListViewControl::Text(RowIndex row, std::size_t column) const {
  const QTreeWidgetItem* item = Item(row);
  if (item == nullptr || !HasColumn(column)) return {};
  return ToUtf8(item->text(static_cast<int>(column)));
}

void ListViewControl::SetText(RowIndex row, std::size_t column, std::string_view text) {
  QTreeWidgetItem* item = Item(row);
  if (item == nullptr || !HasColumn(column)) return;
  const QString shown = ToQString(text);
  item->setText(static_cast<int>(column), shown);
  // A text too long for its column is cut short; here it stands whole.
  item->setToolTip(static_cast<int>(column), PlainToolTip(shown));
}

bool ListViewControl::IsSelected(RowIndex row) const {
  const QTreeWidgetItem* item = Item(row);
  return item != nullptr && item->isSelected();
}

void ListViewControl::SetSelected(RowIndex row, bool selected) {
  if (QTreeWidgetItem* item = Item(row)) item->setSelected(selected);
}

}  // namespace pelora::console
