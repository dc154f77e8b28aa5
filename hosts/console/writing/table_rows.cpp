// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/writing/table_rows.h"

#include "hosts/console/program/guarded_application.h"

namespace pelora::console {

TableRows::TableRows(std::span<const char* const> headings, QObject* parent)
    : QAbstractTableModel(parent), headings_(headings) {}

int TableRows::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(CountRows());
}

int TableRows::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(headings_.size());
}

QVariant TableRows::data(const QModelIndex& index, int role) const {
  return DrawnOrNothing([&] { return DataOf(index, role); });
}

QVariant TableRows::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return QString::fromLatin1(headings_[static_cast<std::size_t>(section)]);
}

void TableRows::TellAllChanged() {
  if (rowCount() == 0) return;
  dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

bool IsShownText(int role) { return role == Qt::DisplayRole || role == Qt::AccessibleTextRole; }

}  // namespace pelora::console
