// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractTableModel>
#include <vector>

#include "hosts/console/choosers/object_search.h"

namespace pelora::console {

/// What a search has found so far, as rows.
class FoundObjectModel final : public QAbstractTableModel {
 public:
  enum Column : int { kName, kType, kLogonName, kMail, kFolder, kColumnCount };

  using QAbstractTableModel::QAbstractTableModel;

  void Clear();
  void Append(std::vector<FoundObject> objects);
  [[nodiscard]] const DirectoryObject& ObjectAt(int row) const {
    return objects_[static_cast<std::size_t>(row)].object;
  }
  [[nodiscard]] int Count() const { return static_cast<int>(objects_.size()); }

  [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;

 private:
  std::vector<FoundObject> objects_;
};

}  // namespace pelora::console
