// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/dialogs/list_box_control.h"

#include <QApplication>
#include <QPainter>
#include <QScopedValueRollback>
#include <algorithm>

#include "hosts/console/dialogs/control_styles.h"
#include "hosts/console/program/guarded_application.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"

namespace pelora::console {
namespace {

constexpr int kDataRole = Qt::UserRole;
constexpr int kDefaultColumnCharacters = 8;

}  // namespace

int TabStopDelegate::NextStop(int position, const QFontMetrics& metrics) const {
  for (const int stop : stops_) {
    if (stop > position) return stop;
  }
  const int column = std::max(1, kDefaultColumnCharacters * metrics.averageCharWidth());
  return (position / column + 1) * column;
}

void TabStopDelegate::initStyleOption(QStyleOptionViewItem* option,
                                      const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  const QString shown = index.data(kShownTextRole).toString();
  if (!shown.isEmpty()) option->text = shown;
}

void TabStopDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
  DrawnOrNothing([&] { PaintColumns(painter, option, index); });
}

void TabStopDelegate::PaintColumns(QPainter* painter, const QStyleOptionViewItem& option,
                                   const QModelIndex& index) const {
  QStyleOptionViewItem row = option;
  initStyleOption(&row, index);
  const QWidget* view = option.widget;
  const QStyle* style = view != nullptr ? view->style() : QApplication::style();
  if (!row.text.contains(QLatin1Char('\t'))) {
    const int kept_free = index.data(kKeptFreeRole).toInt();
    if (kept_free > 0) {
      const int room = std::max(0, row.rect.width() - kept_free);
      row.text = row.fontMetrics.elidedText(row.text, Qt::ElideRight, room);
    }
    style->drawControl(QStyle::CE_ItemViewItem, &row, painter, view);
    return;
  }
  const QStringList columns = row.text.split(QLatin1Char('\t'));
  row.text.clear();
  style->drawControl(QStyle::CE_ItemViewItem, &row, painter, view);

  painter->save();
  painter->setFont(row.font);
  const bool selected = (row.state & QStyle::State_Selected) != 0;
  const bool enabled = (row.state & QStyle::State_Enabled) != 0;
  const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, &row, view) + 1;
  int position = margin;
  for (const QString& column : columns) {
    const QRect cell = row.rect.adjusted(position, 0, -margin, 0);
    // Folders begin alike, and tell more at their end.
    const QString shown = row.fontMetrics.elidedText(column, Qt::ElideMiddle, cell.width());
    style->drawItemText(painter, QStyle::visualRect(row.direction, row.rect, cell),
                        Qt::AlignVCenter | Qt::TextSingleLine, row.palette, enabled, shown,
                        selected ? QPalette::HighlightedText : QPalette::Text);
    position = NextStop(position + row.fontMetrics.horizontalAdvance(column), row.fontMetrics);
  }
  painter->restore();
}

void RowList::keyboardSearch(const QString& letters) {
  const auto begins = [&letters](const QListWidgetItem& item) {
    const QString shown = item.data(kShownTextRole).toString();
    return (shown.isEmpty() ? item.text() : shown).startsWith(letters, Qt::CaseInsensitive);
  };
  // One letter once more goes on to the next row, several narrow what was found.
  const int first = std::max(0, currentRow() + (letters.size() == 1 ? 1 : 0));
  for (int step = 0; step < count(); ++step) {
    const int row = (first + step) % count();
    if (!begins(*item(row))) continue;
    return setCurrentRow(row, QItemSelectionModel::ClearAndSelect);
  }
}

QItemSelectionModel::SelectionFlags RowList::selectionCommand(const QModelIndex& index,
                                                              const QEvent* event) const {
  const QItemSelectionModel::SelectionFlags command = QListWidget::selectionCommand(index, event);
  if (selectionMode() != SingleSelection) return command;
  const bool deselects = (command & (QItemSelectionModel::Deselect | QItemSelectionModel::Toggle));
  return deselects ? QItemSelectionModel::ClearAndSelect : command;
}

ListBoxControl::ListBoxControl(const resources::DialogItem& item, QWidget& parent,
                               ControlEvents& events)
    : DialogControl(item, *new RowList(&parent), events),
      list_(static_cast<RowList&>(widget())),
      delegate_(new TabStopDelegate(&list_)),
      notifies_((item.style & style::kListBoxNotify) != 0) {
  if ((item.style & style::kListBoxSort) != 0) order_.emplace();
  if ((item.style & style::kListBoxExtendedSelection) != 0) {
    list_.setSelectionMode(QAbstractItemView::ExtendedSelection);
  }
  list_.setItemDelegate(delegate_);
  list_.setUniformItemSizes(true);
  if ((item.style & style::kHorizontalScroll) == 0) {
    list_.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  }
  QObject::connect(&list_, &QListWidget::itemSelectionChanged, &list_, [this] {
    if (notifies_ && !changing_) Notify(ControlNotification::kSelectionChange);
  });
}

QListWidgetItem* ListBoxControl::Item(RowIndex row) const {
  return row < Count() ? list_.item(static_cast<int>(row)) : nullptr;
}

std::optional<RowIndex> ListBoxControl::Add(std::string_view text) {
  const QScopedValueRollback changing(changing_, true);
  const QString shown = ToQString(text);
  const int count = list_.count();
  const auto text_at = [this](int at) { return list_.item(at)->text(); };
  const int row = order_ ? order_->PlaceOf(shown, count, text_at) : count;
  list_.insertItem(row, shown);
  // A row too long for the list is cut short; here it stands whole.
  list_.item(row)->setToolTip(PlainToolTip(shown));
  return static_cast<RowIndex>(row);
}

bool ListBoxControl::Remove(RowIndex row) {
  const QScopedValueRollback changing(changing_, true);
  const QListWidgetItem* item = Item(row);
  if (item == nullptr) return false;
  const bool was_selected = item->isSelected();
  delete item;
  // The view passes the selection on to a neighbour; nobody chose that one.
  if (was_selected && list_.selectionMode() == QAbstractItemView::SingleSelection) Deselect();
  return true;
}

void ListBoxControl::Clear() {
  const QScopedValueRollback changing(changing_, true);
  list_.clear();
}

RowIndex ListBoxControl::Count() const { return static_cast<RowIndex>(list_.count()); }

std::string ListBoxControl::Text(RowIndex row) const {
  const QListWidgetItem* item = Item(row);
  return item != nullptr ? ToUtf8(item->text()) : std::string();
}

void* ListBoxControl::Data(RowIndex row) const {
  const QListWidgetItem* item = Item(row);
  return item != nullptr ? item->data(kDataRole).value<void*>() : nullptr;
}

void ListBoxControl::SetData(RowIndex row, void* data) {
  if (QListWidgetItem* item = Item(row)) item->setData(kDataRole, QVariant::fromValue(data));
}

std::optional<RowIndex> ListBoxControl::Selection() const {
  const QItemSelection selected = list_.selectionModel()->selection();
  if (selected.isEmpty()) return std::nullopt;
  const auto first = std::ranges::min_element(selected, {}, &QItemSelectionRange::top);
  return static_cast<RowIndex>(first->top());
}

void ListBoxControl::Select(std::optional<RowIndex> row) {
  const QScopedValueRollback changing(changing_, true);
  QListWidgetItem* item = row ? Item(*row) : nullptr;
  if (item == nullptr) return Deselect();
  list_.setCurrentItem(item, QItemSelectionModel::ClearAndSelect);
}

void ListBoxControl::Deselect() { list_.setCurrentItem(nullptr, QItemSelectionModel::Clear); }

void ListBoxControl::SetTabStops(std::span<const int> stops) {
  delegate_->SetTabStops({stops.begin(), stops.end()});
  list_.viewport()->update();
}

}  // namespace pelora::console
