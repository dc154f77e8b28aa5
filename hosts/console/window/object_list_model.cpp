// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/window/object_list_model.h"

#include <algorithm>
#include <limits>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "hosts/console/life/object_drag.h"
#include "hosts/console/program/guarded_application.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/object_icons.h"

namespace pelora::console {

void ObjectListModel::SetColumns(std::vector<session::ListColumn> columns) {
  beginResetModel();
  rows_.KeepFirst(0);
  shown_ = 0;
  columns_ = std::move(columns);
  ordered_column_ = -1;
  endResetModel();
}

void ObjectListModel::Gather(std::vector<session::ListedObject> objects) {
  for (session::ListedObject& listed : objects) rows_.Add(std::move(listed), columns_.size());
  // Not when they are shown, all at once.
  if (ordered_column_ >= 0) LearnOrder(ordered_column_);
}

void ObjectListModel::DropGathered() {
  ForgetOrder(shown_, rows_.Count());
  rows_.KeepFirst(shown_);
}

void ObjectListModel::ShowGathered() {
  if (GatheredCount() == 0) return;
  // The rows are there: nothing may fail from here on, views count on the end of what has begun.
  beginInsertRows({}, rowCount({}), static_cast<int>(rows_.Count()) - 1);
  shown_ = rows_.Count();
  endInsertRows();
}

void ObjectListModel::ShowGatheredOnly() {
  beginResetModel();
  ForgetOrder(0, shown_);
  rows_.DropFirst(shown_);
  shown_ = rows_.Count();
  endResetModel();
}

void ObjectListModel::ForgetOrder(std::size_t first, std::size_t last) {
  const auto forget = [first, last](auto& order) {
    const auto at = [&order](std::size_t row) {
      return order.begin() + static_cast<std::ptrdiff_t>(std::min(row, order.size()));
    };
    order.erase(at(first), at(last));
  };
  forget(text_order_);
  forget(number_order_);
}

void ObjectListModel::LearnOrder(int column) const {
  if (ordered_column_ != column) {
    text_order_.clear();
    number_order_.clear();
    ordered_column_ = column;
  }
  const bool is_number =
      columns_[static_cast<std::size_t>(column)].order == session::ListColumn::Order::kNumber;
  const std::size_t known = is_number ? number_order_.size() : text_order_.size();
  for (std::size_t row = known; row < rows_.Count(); ++row) {
    const QString& text = rows_.TextAt(row, column);
    if (!is_number) {
      text_order_.push_back(collation_.KeyOf(text));
      continue;
    }
    bool is_digits = false;
    const qlonglong number = text.toLongLong(&is_digits);
    number_order_.push_back(is_digits ? number : std::numeric_limits<qlonglong>::min());
  }
}

bool ObjectListModel::IsBefore(int column, int left, int right) const {
  LearnOrder(column);
  const auto first = static_cast<std::size_t>(left);
  const auto second = static_cast<std::size_t>(right);
  if (!number_order_.empty()) return number_order_[first] < number_order_[second];
  return text_order_[first].compare(text_order_[second]) < 0;
}

int ObjectListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(shown_);
}

int ObjectListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant ObjectListModel::data(const QModelIndex& index, int role) const {
  return DrawnOrNothing([&] { return DataOf(index, role); });
}

QVariant ObjectListModel::DataOf(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const auto row = static_cast<std::size_t>(index.row());
  const QString& text = rows_.TextAt(row, index.column());
  const bool is_number = columns_[static_cast<std::size_t>(index.column())].order ==
                         session::ListColumn::Order::kNumber;
  switch (role) {
    case Qt::DisplayRole:
      return Readable(text);
    case Qt::ToolTipRole:
      return PlainToolTip(text);
    case Qt::TextAlignmentRole:
      return is_number ? QVariant(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
    case Qt::DecorationRole:
      return index.column() == kName ? QVariant(IconOf(rows_.KindAt(row).icon, rows_.MarkAt(row)))
                                     : QVariant();
    case Qt::AccessibleDescriptionRole:
      return index.column() == kName ? QVariant(TextOf(rows_.MarkAt(row))) : QVariant();
    default:
      return {};
  }
}

QVariant ObjectListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  const session::ListColumn& column = columns_[static_cast<std::size_t>(section)];
  if (role == Qt::DisplayRole) return ToQString(column.title);
  if (role == Qt::ToolTipRole) return PlainToolTip(ToQString(column.place));
  return {};
}

Qt::ItemFlags ObjectListModel::flags(const QModelIndex& index) const {
  return QAbstractTableModel::flags(index) | Qt::ItemIsDragEnabled;
}

QMimeData* ObjectListModel::mimeData(const QModelIndexList& indexes) const {
  std::vector<std::string> dns;
  // What a rule finds has a row each, several of one object.
  std::unordered_set<std::string_view> known;
  for (const QModelIndex& index : indexes) {
    const std::string& dn = DnAt(index.row());
    if (index.column() == kName && known.insert(dn).second) dns.push_back(dn);
  }
  return DraggedObjects(dns);
}

}  // namespace pelora::console
