// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractTableModel>
#include <QCollatorSortKey>
#include <QString>
#include <vector>

#include "hosts/console/text/collation.h"
#include "hosts/session/find/list_columns.h"

namespace pelora::console {

/// Objects as rows of chosen columns. It is made for 100,000 of them: no row has a widget, texts
/// that repeat are kept once, and what a column is ordered by is worked out once.
class ObjectListModel final : public QAbstractTableModel {
 public:
  /// Whatever columns there are, the first is the name.
  static constexpr int kName = 0;

  using QAbstractTableModel::QAbstractTableModel;

  /// Shows other columns; no objects are left.
  void SetColumns(std::vector<session::ListColumn> columns);
  void SetObjects(std::vector<session::ListedObject> objects);
  void AddObjects(std::vector<session::ListedObject> objects);
  [[nodiscard]] const session::DirectoryObject& ObjectAt(int row) const {
    return rows_[static_cast<std::size_t>(row)].object;
  }
  /// `session::ListedObject::attribute`.
  [[nodiscard]] const std::string& AttributeAt(int row) const {
    return rows_[static_cast<std::size_t>(row)].attribute;
  }
  [[nodiscard]] const QString& TextAt(int row, int column) const {
    return rows_[static_cast<std::size_t>(row)].texts[column];
  }
  [[nodiscard]] const std::vector<session::ListColumn>& columns() const { return columns_; }
  /// Whether a row comes before another in the order of a column: numbers as numbers, texts as the
  /// user's language has them, and what is empty first.
  [[nodiscard]] bool IsBefore(int column, int left, int right) const;

  [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;
  /// Objects can be dragged.
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  [[nodiscard]] QMimeData* mimeData(const QModelIndexList& indexes) const override;

 private:
  /// Texts are made for the view once: it asks for them at every comparison and drawing.
  struct Row {
    session::DirectoryObject object;
    std::string attribute;
    QList<QString> texts;
  };

  [[nodiscard]] std::vector<Row> RowsOf(std::vector<session::ListedObject> objects) const;
  [[nodiscard]] QVariant DataOf(const QModelIndex& index, int role) const;
  /// Works out what the rows of a column are ordered by, as far as that is not known.
  void LearnOrder(int column) const;
  void ForgetOrder();

  std::vector<session::ListColumn> columns_;
  std::vector<Row> rows_;

  Collation collation_;
  /// What is known of the order of one column, row by row.
  mutable int ordered_column_ = -1;
  mutable std::vector<QCollatorSortKey> text_order_;
  mutable std::vector<qlonglong> number_order_;
};

}  // namespace pelora::console
