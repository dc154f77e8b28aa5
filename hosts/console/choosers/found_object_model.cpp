// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/choosers/found_object_model.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "hosts/console/program/guarded_application.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/object_icons.h"

namespace pelora::console {
namespace {

constexpr std::array kHeads = {"Name", "Type", "Logon Name", "E-mail Address", "Folder"};

}  // namespace

void FoundObjectModel::Clear() {
  beginResetModel();
  rows_.clear();
  endResetModel();
}

void FoundObjectModel::Append(std::vector<session::FoundObject> objects) {
  if (objects.empty()) return;
  std::vector<Row> rows;
  rows.reserve(objects.size());
  for (session::FoundObject& found : objects) {
    Texts texts = {ToQString(found.object.name), ToQString(found.object.kind.type_text),
                   ToQString(found.logon_name), ToQString(found.mail), ToQString(found.folder)};
    rows.push_back({.object = std::move(found.object), .texts = std::move(texts)});
  }
  if (rows_.size() + rows.size() > rows_.capacity()) {
    rows_.reserve(std::max(rows_.size() + rows.size(), rows_.capacity() * 2));
  }
  // Nothing may fail from here on: views count on the end of what has begun.
  beginInsertRows({}, Count(), Count() + static_cast<int>(rows.size()) - 1);
  std::ranges::move(rows, std::back_inserter(rows_));
  endInsertRows();
}

int FoundObjectModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : Count();
}

int FoundObjectModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumnCount;
}

QVariant FoundObjectModel::data(const QModelIndex& index, int role) const {
  return DrawnOrNothing([&] { return DataOf(index, role); });
}

QVariant FoundObjectModel::DataOf(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const Row& row = rows_[static_cast<std::size_t>(index.row())];
  if (role == Qt::DisplayRole) {
    return Readable(row.texts[static_cast<std::size_t>(index.column())]);
  }
  if (role == Qt::ToolTipRole) return PlainToolTip(ToQString(row.object.dn));
  if (role == Qt::DecorationRole && index.column() == kName) return IconOf(row.object.kind.icon);
  return {};
}

QVariant FoundObjectModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return QString::fromLatin1(kHeads[static_cast<std::size_t>(section)]);
}

}  // namespace pelora::console
