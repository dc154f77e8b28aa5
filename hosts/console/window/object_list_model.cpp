// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/window/object_list_model.h"

#include <array>
#include <utility>

#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/object_icons.h"

namespace pelora::console {
namespace {

constexpr std::array kHeads = {"Name", "Type", "Description"};

}  // namespace

void ObjectListModel::Append(std::vector<session::DirectoryObject> objects) {
  rows_.reserve(rows_.size() + objects.size());
  for (session::DirectoryObject& object : objects) {
    Texts texts = {ToQString(object.name), ToQString(object.kind.type_text),
                   ToQString(object.description)};
    rows_.push_back({.object = std::move(object), .texts = std::move(texts)});
  }
}

void ObjectListModel::SetObjects(std::vector<session::DirectoryObject> objects) {
  beginResetModel();
  rows_.clear();
  Append(std::move(objects));
  endResetModel();
}

void ObjectListModel::AddObjects(std::vector<session::DirectoryObject> objects) {
  if (objects.empty()) return;
  const int first = rowCount({});
  beginInsertRows({}, first, first + static_cast<int>(objects.size()) - 1);
  Append(std::move(objects));
  endInsertRows();
}

int ObjectListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int ObjectListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumnCount;
}

QVariant ObjectListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const Row& row = rows_[static_cast<std::size_t>(index.row())];
  if (role == Qt::DisplayRole) return row.texts[static_cast<std::size_t>(index.column())];
  if (role == Qt::ToolTipRole && index.column() == kDescription) {
    return PlainToolTip(row.texts[kDescription]);
  }
  if (role == Qt::DecorationRole && index.column() == kName) return IconOf(row.object.kind.icon);
  return {};
}

QVariant ObjectListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return QString::fromLatin1(kHeads[static_cast<std::size_t>(section)]);
}

}  // namespace pelora::console
