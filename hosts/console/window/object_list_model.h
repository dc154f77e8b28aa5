// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractTableModel>
#include <QCollatorSortKey>
#include <QString>
#include <deque>
#include <string>
#include <vector>

#include "hosts/console/text/collation.h"
#include "hosts/console/window/object_rows.h"
#include "hosts/session/find/list_columns.h"

namespace pelora::console {

/// Objects as rows of chosen columns. It is made for 100,000 of them: no row has a widget, and what
/// a column is ordered by is worked out once.
///
/// Objects are gathered first, which costs as much as there are of them, and then shown, which
/// costs a walk over all there are: so whoever gets them little by little chooses how often.
class ObjectListModel final : public QAbstractTableModel {
 public:
  /// Whatever columns there are, the first is the name.
  static constexpr int kName = 0;

  using QAbstractTableModel::QAbstractTableModel;

  /// Shows other columns; no objects are left, gathered ones neither.
  void SetColumns(std::vector<session::ListColumn> columns);
  /// Keeps objects for when they are to be shown.
  void Gather(std::vector<session::ListedObject> objects);
  [[nodiscard]] std::size_t GatheredCount() const { return rows_.Count() - shown_; }
  void DropGathered();
  /// Shows what was gathered behind what is shown, or in its place.
  void ShowGathered();
  void ShowGatheredOnly();

  [[nodiscard]] session::DirectoryObject ObjectAt(int row) const {
    return rows_.ObjectAt(static_cast<std::size_t>(row));
  }
  [[nodiscard]] const std::string& DnAt(int row) const {
    return rows_.DnAt(static_cast<std::size_t>(row));
  }
  /// `session::ListedObject::attribute`.
  [[nodiscard]] const std::string& AttributeAt(int row) const {
    return rows_.AttributeAt(static_cast<std::size_t>(row));
  }
  [[nodiscard]] const QString& TextAt(int row, int column) const {
    return rows_.TextAt(static_cast<std::size_t>(row), column);
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
  [[nodiscard]] QVariant DataOf(const QModelIndex& index, int role) const;
  /// Works out what the rows of a column are ordered by, as far as that is not known.
  void LearnOrder(int column) const;
  /// Forgets it of the rows from `first` to before `last`.
  void ForgetOrder(std::size_t first, std::size_t last);

  std::vector<session::ListColumn> columns_;
  /// What is shown, and behind it what was gathered.
  ObjectRows rows_;
  std::size_t shown_ = 0;

  Collation collation_;
  /// What is known of the order of one column, row by row, of as many as there is something.
  mutable int ordered_column_ = -1;
  mutable std::deque<QCollatorSortKey> text_order_;
  mutable std::deque<qlonglong> number_order_;
};

}  // namespace pelora::console
