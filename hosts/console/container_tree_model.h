// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractItemModel>
#include <functional>
#include <memory>
#include <vector>

#include "hosts/console/directory_browser.h"

namespace pelora::console {

/// The containers of a directory as a tree. What stands below a container is read when the
/// container is first opened, and not again before `Reload`.
class ContainerTreeModel final : public QAbstractItemModel {
 public:
  /// Told of a container that could not be read; it shows as one without any below it, and is read
  /// again when it is next opened.
  using FailureSink = std::function<void(const DirectoryObject& container, const QString& reason)>;

  ContainerTreeModel(DirectoryBrowser browser, DirectoryObject base, FailureSink on_failure);
  ~ContainerTreeModel() override;

  /// The container of a row; the index has to be valid.
  [[nodiscard]] const DirectoryObject& ObjectAt(const QModelIndex& index) const;
  [[nodiscard]] QModelIndex BaseIndex() const;
  /// Forgets what was read below the base.
  void Reload();
  /// The row of a container right below `parent`, which is opened for it; none when there is none.
  [[nodiscard]] QModelIndex ChildOf(const QModelIndex& parent, const std::string& dn);

  [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent) const override;
  [[nodiscard]] QModelIndex parent(const QModelIndex& index) const override;
  [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;
  [[nodiscard]] bool hasChildren(const QModelIndex& parent) const override;
  [[nodiscard]] bool canFetchMore(const QModelIndex& parent) const override;
  void fetchMore(const QModelIndex& parent) override;

 private:
  struct Node;

  [[nodiscard]] Node* NodeAt(const QModelIndex& index) const;

  DirectoryBrowser browser_;
  FailureSink on_failure_;
  std::unique_ptr<Node> base_;
};

}  // namespace pelora::console
