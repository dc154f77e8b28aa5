// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractTableModel>
#include <QString>
#include <array>
#include <vector>

#include "hosts/console/choosers/object_search.h"

namespace pelora::console {

/// What a search has found so far, as rows.
class FoundObjectModel final : public QAbstractTableModel {
 public:
  enum Column : int { kName, kType, kLogonName, kMail, kFolder, kColumnCount };

  using QAbstractTableModel::QAbstractTableModel;

  void Clear();
  void Append(std::vector<session::FoundObject> objects);
  [[nodiscard]] const session::DirectoryObject& ObjectAt(int row) const {
    return rows_[static_cast<std::size_t>(row)].object;
  }
  [[nodiscard]] int Count() const { return static_cast<int>(rows_.size()); }

  [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;

 private:
  using Texts = std::array<QString, kColumnCount>;
  /// Texts are made for the view once: it asks for them at every comparison and drawing.
  struct Row {
    session::DirectoryObject object;
    Texts texts;
  };

  [[nodiscard]] QVariant DataOf(const QModelIndex& index, int role) const;

  std::vector<Row> rows_;
};

}  // namespace pelora::console
