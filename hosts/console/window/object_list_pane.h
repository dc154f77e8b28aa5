// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>
#include <cstddef>
#include <string>
#include <vector>

#include "hosts/console/window/object_list_model.h"
#include "hosts/console/window/ordered_objects.h"

class QLineEdit;
class QTreeView;

namespace pelora::console {

class NameLabel;

/// A column as it lies in a list.
struct LyingColumn {
  /// `session::ListColumn::name`.
  std::string name;
  /// How wide it is, in average characters.
  int width = 0;
};

/// Objects in chosen columns: a sortable list in which several can be selected, under a line that
/// narrows it to those with a text in any column.
///
/// Down in the line goes into the list, Ctrl and a digit orders by that column (again: the other
/// way round), typing goes to the object whose name begins so.
class ObjectListPane final : public QWidget {
  Q_OBJECT

 public:
  explicit ObjectListPane(QWidget* parent);

  /// Shows other columns, the first of which is the name; no objects are left.
  void SetColumns(std::vector<session::ListColumn> columns);
  [[nodiscard]] const std::vector<session::ListColumn>& columns() const {
    return model_->columns();
  }
  /// The columns as they lie, from the left.
  [[nodiscard]] std::vector<LyingColumn> Lying() const;
  /// Makes columns as wide as that.
  void SetWidths(const std::vector<LyingColumn>& widths);
  /// Order, widths and sorting of the columns, to be kept and to be set again for the same columns.
  /// What is not understood changes nothing.
  [[nodiscard]] QByteArray Layout() const;
  void SetLayout(const QByteArray& layout);
  /// Keeps objects for when they are to be shown.
  void Gather(std::vector<session::ListedObject> objects);
  [[nodiscard]] std::size_t GatheredCount() const { return model_->GatheredCount(); }
  void DropGathered();
  /// Shows what was gathered besides what is shown.
  void ShowGathered();
  /// Shows what was gathered in place of what is shown; what was selected and is still there stays
  /// selected.
  void ShowGatheredOnly();
  /// Selects the objects of these names, as far as they are shown; when none is, nothing changes.
  void Select(const std::vector<std::string>& names);
  /// The selected objects, in the order shown, each once.
  [[nodiscard]] std::vector<session::DirectoryObject> Selection() const;
  /// The attribute that the one selected row is about, where a rule has found it; empty elsewhere.
  [[nodiscard]] std::string SelectedAttribute() const;
  /// The selected rows (without any: all that are shown) as lines with tabs, under a line of the
  /// columns' titles.
  [[nodiscard]] QString AsText() const;
  /// The same objects, each once, as a table that `peloractl apply` reads: their distinguished
  /// names, and the columns by the names that scripts have for them.
  [[nodiscard]] std::string AsCsv() const;
  /// What the list says in place of rows while it shows none; empty: nothing.
  void SayWhenEmpty(const QString& text);
  /// The object of a row of the view.
  [[nodiscard]] session::DirectoryObject ObjectAt(const QModelIndex& index) const;
  [[nodiscard]] int ShownCount() const;
  [[nodiscard]] int Count() const;

  [[nodiscard]] QTreeView& view() const { return *view_; }
  /// The rows that are shown.
  [[nodiscard]] const OrderedObjects& rows() const { return *shown_; }
  [[nodiscard]] QLineEdit& filter() const { return *filter_; }

 Q_SIGNALS:
  void SelectionChanged();
  /// Enter or a double click: the selection is to be opened.
  void Opened();
  /// Other rows are shown than before.
  void ContentsChanged();

 private:
  void MakeFilter();
  void MakeView();
  void MakeKeys();
  void MakeWords();
  void SortBy(int place);
  [[nodiscard]] std::vector<std::string> SelectedNames() const;
  /// Rows of the model, in the order shown: the selected ones, or all.
  [[nodiscard]] std::vector<int> RowsToGive() const;
  /// Columns of the model, in the order shown.
  [[nodiscard]] std::vector<int> ColumnsShown() const;

  ObjectListModel* model_;
  OrderedObjects* shown_;
  QLineEdit* filter_ = nullptr;
  QTreeView* view_ = nullptr;
  NameLabel* empty_ = nullptr;
};

}  // namespace pelora::console
