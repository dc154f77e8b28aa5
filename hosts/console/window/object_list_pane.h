// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>
#include <vector>

#include "hosts/console/window/object_list_model.h"

class QLineEdit;
class QSortFilterProxyModel;
class QTreeView;

namespace pelora::console {

/// The objects of a container: a sortable list in which several can be selected, under a line that
/// narrows it to those with a text in any column.
class ObjectListPane final : public QWidget {
  Q_OBJECT

 public:
  explicit ObjectListPane(QWidget* parent);

  /// Shows other objects; those that were selected and are still there stay selected.
  void SetObjects(std::vector<session::DirectoryObject> objects);
  /// Shows more objects.
  void AddObjects(std::vector<session::DirectoryObject> objects);
  /// Selects the objects of these names, as far as they are shown; when none is, nothing changes.
  void Select(const std::vector<std::string>& names);
  /// The selected objects, in the order shown.
  [[nodiscard]] std::vector<session::DirectoryObject> Selection() const;
  [[nodiscard]] int ShownCount() const;
  [[nodiscard]] int Count() const;

  [[nodiscard]] QTreeView& view() const { return *view_; }
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

  ObjectListModel* model_;
  QSortFilterProxyModel* shown_;
  QLineEdit* filter_ = nullptr;
  QTreeView* view_ = nullptr;
};

}  // namespace pelora::console
