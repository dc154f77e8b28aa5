// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractTableModel>
#include <QString>
#include <array>
#include <vector>

#include "hosts/session/directory_browser.h"

namespace pelora::console {

/// The objects of one container as rows of name, type and description.
class ObjectListModel final : public QAbstractTableModel {
 public:
  enum Column : int { kName, kType, kDescription, kColumnCount };

  using QAbstractTableModel::QAbstractTableModel;

  void SetObjects(std::vector<session::DirectoryObject> objects);
  void AddObjects(std::vector<session::DirectoryObject> objects);
  [[nodiscard]] const session::DirectoryObject& ObjectAt(int row) const {
    return rows_[static_cast<std::size_t>(row)].object;
  }

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

  void Append(std::vector<session::DirectoryObject> objects);

  std::vector<Row> rows_;
};

}  // namespace pelora::console
