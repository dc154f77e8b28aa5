// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/object_list_model.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "hosts/console/object_icons.h"

namespace pelora::console {
namespace {

constexpr std::array kHeads = {"Name", "Type", "Description"};

QString TextOf(const DirectoryObject& object, int column) {
  switch (column) {
    case ObjectListModel::kName:
      return object.name;
    case ObjectListModel::kType:
      return object.kind.type_text;
    default:
      return object.description;
  }
}

}  // namespace

void ObjectListModel::SetObjects(std::vector<DirectoryObject> objects) {
  beginResetModel();
  objects_ = std::move(objects);
  endResetModel();
}

void ObjectListModel::AddObjects(std::vector<DirectoryObject> objects) {
  if (objects.empty()) return;
  const int first = rowCount({});
  beginInsertRows({}, first, first + static_cast<int>(objects.size()) - 1);
  std::ranges::move(objects, std::back_inserter(objects_));
  endInsertRows();
}

int ObjectListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(objects_.size());
}

int ObjectListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumnCount;
}

QVariant ObjectListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const DirectoryObject& object = ObjectAt(index.row());
  if (role == Qt::DisplayRole) return TextOf(object, index.column());
  if (role == Qt::ToolTipRole && index.column() == kDescription) return object.description;
  if (role == Qt::DecorationRole && index.column() == kName) return IconOf(object.kind.icon);
  return {};
}

QVariant ObjectListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return QString::fromLatin1(kHeads[static_cast<std::size_t>(section)]);
}

}  // namespace pelora::console
