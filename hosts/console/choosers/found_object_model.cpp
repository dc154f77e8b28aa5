// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/choosers/found_object_model.h"

#include <array>
#include <iterator>

#include "hosts/console/object_icons.h"
#include "hosts/console/qt_text.h"

namespace pelora::console {
namespace {

constexpr std::array kHeads = {"Name", "Type", "Logon Name", "E-mail Address", "Folder"};

QString TextOf(const FoundObject& found, int column) {
  switch (column) {
    case FoundObjectModel::kName:
      return found.object.name;
    case FoundObjectModel::kType:
      return found.object.kind.type_text;
    case FoundObjectModel::kLogonName:
      return found.logon_name;
    case FoundObjectModel::kMail:
      return found.mail;
    default:
      return found.folder;
  }
}

/// A name as it is, whatever it looks like.
QString AsToolTip(const std::string& dn) {
  return QStringLiteral("<span>%1</span>").arg(ToQString(dn).toHtmlEscaped());
}

}  // namespace

void FoundObjectModel::Clear() {
  beginResetModel();
  objects_.clear();
  endResetModel();
}

void FoundObjectModel::Append(std::vector<FoundObject> objects) {
  if (objects.empty()) return;
  beginInsertRows({}, Count(), Count() + static_cast<int>(objects.size()) - 1);
  std::move(objects.begin(), objects.end(), std::back_inserter(objects_));
  endInsertRows();
}

int FoundObjectModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : Count();
}

int FoundObjectModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumnCount;
}

QVariant FoundObjectModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const FoundObject& found = objects_[static_cast<std::size_t>(index.row())];
  if (role == Qt::DisplayRole) return TextOf(found, index.column());
  if (role == Qt::ToolTipRole) return AsToolTip(found.object.dn);
  if (role == Qt::DecorationRole && index.column() == kName) {
    return IconOf(found.object.kind.icon);
  }
  return {};
}

QVariant FoundObjectModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return QString::fromLatin1(kHeads[static_cast<std::size_t>(section)]);
}

}  // namespace pelora::console
