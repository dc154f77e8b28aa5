// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractItemModel>
#include <functional>
#include <memory>
#include <vector>

#include "hosts/console/reading/directory_reader.h"

namespace pelora::console {

/// The containers of a directory as a tree. What stands below a container is read when the
/// container is first opened, beside the user interface, and not again before `Reload`.
class ContainerTreeModel final : public QAbstractItemModel {
 public:
  /// Told of a container that could not be read, or not to its end; it is read again when it is
  /// next opened.
  using FailureSink =
      std::function<void(const session::DirectoryObject& container, const QString& reason)>;

  /// Given the row that was asked for, or none when there is no such container.
  using IndexSink = std::function<void(const QModelIndex& index)>;

  /// `reader` outlives the model.
  ContainerTreeModel(DirectoryReader& reader, session::DirectoryObject base,
                     FailureSink on_failure);
  ~ContainerTreeModel() override;

  /// The container of a row; the index has to be valid.
  [[nodiscard]] const session::DirectoryObject& ObjectAt(const QModelIndex& index) const;
  [[nodiscard]] QModelIndex BaseIndex() const;
  /// Forgets what was read below the base.
  void Reload();
  /// Finds the row of a container right below `parent`, which is read for it: `sink` is called at
  /// once where it has been read, and otherwise when it has. Not at all after `Reload`.
  void FindChild(const QModelIndex& parent, const std::string& dn, IndexSink sink);
  /// Containers for an advanced view are shown too; takes effect with the next `Reload`.
  void SetAdvanced(bool advanced) { advanced_ = advanced; }
  [[nodiscard]] bool IsReading() const;

  [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent) const override;
  [[nodiscard]] QModelIndex parent(const QModelIndex& index) const override;
  [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;
  /// All containers but the base can be dragged.
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  [[nodiscard]] QMimeData* mimeData(const QModelIndexList& indexes) const override;
  [[nodiscard]] bool hasChildren(const QModelIndex& parent) const override;
  [[nodiscard]] bool canFetchMore(const QModelIndex& parent) const override;
  void fetchMore(const QModelIndex& parent) override;

 private:
  struct Node;
  using Children = std::vector<std::unique_ptr<Node>>;

  [[nodiscard]] Node* NodeAt(const QModelIndex& index) const;
  [[nodiscard]] QModelIndex IndexOf(Node* node) const;
  [[nodiscard]] QModelIndex ChildIndex(const Node& node, const std::string& dn) const;
  void Read(Node* node);
  void Finish(Node* node, const session::SearchEnd& end);
  /// What has arrived, in order.
  [[nodiscard]] static Children ArrivedAt(Node& node);
  void Insert(Node& node, Children children);
  [[nodiscard]] QVariant DataOf(const QModelIndex& index, int role) const;

  DirectoryReader& reader_;
  bool advanced_ = false;
  FailureSink on_failure_;
  std::unique_ptr<Node> base_;
};

}  // namespace pelora::console
