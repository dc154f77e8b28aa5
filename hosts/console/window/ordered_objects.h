// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractProxyModel>
#include <QString>
#include <vector>

#include "hosts/console/window/object_list_model.h"

namespace pelora::console {

/// The rows of a list of objects that hold a text, in the order of a column. It is made for 100,000
/// of them that arrive in no order: what is new is put in order by itself, and its places among
/// what is there are looked for, so that an arrival costs no comparison with most of the rows.
///
/// A row stays selected when others come or the order changes; another text, and other objects,
/// begin anew.
class OrderedObjects final : public QAbstractProxyModel {
 public:
  /// `objects` outlives the model.
  OrderedObjects(ObjectListModel& objects, QObject* parent);

  /// Shows the rows of which a column has this text somewhere, in any case; empty: all.
  void SetText(const QString& text);

  /// How often a row of the objects was compared with another since the model was made: what an
  /// order costs.
  [[nodiscard]] std::size_t comparisons() const { return comparisons_; }

  void sort(int column, Qt::SortOrder order) override;

  [[nodiscard]] QModelIndex mapToSource(const QModelIndex& index) const override;
  [[nodiscard]] QModelIndex mapFromSource(const QModelIndex& index) const override;
  [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent) const override;
  [[nodiscard]] QModelIndex parent(const QModelIndex& index) const override;
  [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent) const override;
  [[nodiscard]] bool hasChildren(const QModelIndex& parent) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;

 private:
  /// Takes all rows anew.
  void Fill();
  void TakeArrived(int first, int last);
  [[nodiscard]] std::vector<int> Wanted(int first, int last) const;
  [[nodiscard]] bool ComesBefore(int left, int right) const;
  void Order(std::vector<int>& rows) const;
  /// Puts rows into another order; views follow them.
  template <class Reorder>
  void Rearrange(const Reorder& reorder);
  void NotePlaces();

  ObjectListModel& objects_;
  QString text_;
  int column_ = -1;
  bool is_descending_ = false;
  /// Rows of the objects, as they are shown, and where each of them stands; -1: nowhere.
  std::vector<int> rows_;
  std::vector<int> places_;
  mutable std::size_t comparisons_ = 0;
};

}  // namespace pelora::console
