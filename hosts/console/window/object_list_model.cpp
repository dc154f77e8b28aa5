// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/window/object_list_model.h"

#include <algorithm>
#include <iterator>
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
  rows_.clear();
  columns_ = std::move(columns);
  ForgetOrder();
  endResetModel();
}

std::vector<ObjectListModel::Row> ObjectListModel::RowsOf(
    std::vector<session::ListedObject> objects) const {
  std::vector<Row> rows;
  rows.reserve(objects.size());
  const Row* before = rows_.empty() ? nullptr : &rows_.back();
  for (session::ListedObject& listed : objects) {
    Row row{
        .object = std::move(listed.object), .attribute = std::move(listed.attribute), .texts = {}};
    row.texts.reserve(static_cast<qsizetype>(columns_.size()));
    for (std::size_t column = 0; column < columns_.size(); ++column) {
      QString text = column < listed.cells.size() ? ToQString(listed.cells[column]) : QString();
      const bool repeats =
          before != nullptr && before->texts[static_cast<qsizetype>(column)] == text;
      // A copy shares its characters with what it is a copy of.
      row.texts.append(repeats ? before->texts[static_cast<qsizetype>(column)] : std::move(text));
    }
    rows.push_back(std::move(row));
    before = &rows.back();
  }
  return rows;
}

void ObjectListModel::SetObjects(std::vector<session::ListedObject> objects) {
  std::vector<Row> rows = RowsOf(std::move(objects));
  beginResetModel();
  rows_ = std::move(rows);
  ForgetOrder();
  endResetModel();
}

void ObjectListModel::AddObjects(std::vector<session::ListedObject> objects) {
  if (objects.empty()) return;
  std::vector<Row> rows = RowsOf(std::move(objects));
  // Growing to what is needed and no more would move all rows at every arrival.
  if (rows_.size() + rows.size() > rows_.capacity()) {
    rows_.reserve(std::max(rows_.size() + rows.size(), rows_.capacity() * 2));
  }
  const int first = rowCount({});
  // Nothing may fail from here on: views count on the end of what has begun.
  beginInsertRows({}, first, first + static_cast<int>(rows.size()) - 1);
  std::ranges::move(rows, std::back_inserter(rows_));
  endInsertRows();
}

void ObjectListModel::ForgetOrder() {
  ordered_column_ = -1;
  text_order_.clear();
  number_order_.clear();
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
  for (std::size_t row = known; row < rows_.size(); ++row) {
    const QString& text = rows_[row].texts[column];
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
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int ObjectListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant ObjectListModel::data(const QModelIndex& index, int role) const {
  return DrawnOrNothing([&] { return DataOf(index, role); });
}

QVariant ObjectListModel::DataOf(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const Row& row = rows_[static_cast<std::size_t>(index.row())];
  const QString& text = row.texts[index.column()];
  const bool is_number = columns_[static_cast<std::size_t>(index.column())].order ==
                         session::ListColumn::Order::kNumber;
  switch (role) {
    case Qt::DisplayRole:
      return text;
    case Qt::ToolTipRole:
      return PlainToolTip(text);
    case Qt::TextAlignmentRole:
      return is_number ? QVariant(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
    case Qt::DecorationRole:
      return index.column() == kName ? QVariant(IconOf(row.object.kind.icon, row.object.mark))
                                     : QVariant();
    case Qt::AccessibleDescriptionRole:
      return index.column() == kName ? QVariant(TextOf(row.object.mark)) : QVariant();
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
    const std::string& dn = ObjectAt(index.row()).dn;
    if (index.column() == kName && known.insert(dn).second) dns.push_back(dn);
  }
  return DraggedObjects(dns);
}

}  // namespace pelora::console
