// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractTableModel>
#include <vector>

#include "hosts/console/directory_browser.h"

namespace pelora::console {

/// The objects of one container as rows of name, type and description.
class ObjectListModel final : public QAbstractTableModel {
 public:
  enum Column : int { kName, kType, kDescription, kColumnCount };

  using QAbstractTableModel::QAbstractTableModel;

  void SetObjects(std::vector<DirectoryObject> objects);
  void AddObjects(std::vector<DirectoryObject> objects);
  [[nodiscard]] const DirectoryObject& ObjectAt(int row) const {
    return objects_[static_cast<std::size_t>(row)];
  }

  [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;

 private:
  std::vector<DirectoryObject> objects_;
};

}  // namespace pelora::console
