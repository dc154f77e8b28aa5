// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QSplitter>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "hosts/console/window/container_listing.h"
#include "hosts/console/window/container_tree_model.h"
#include "hosts/console/window/object_list_pane.h"

class QTreeView;

namespace pelora::console {

/// A directory on the screen: the tree of its containers on the left, the objects of the current
/// one on the right, both read beside the user interface.
class DirectoryPane final : public QSplitter {
 public:
  explicit DirectoryPane(QWidget* parent);
  ~DirectoryPane() override;

  /// Shows a directory from its base on, in place of the one shown before. `opener` opens it for
  /// use on the pane's own threads.
  void ShowDirectory(session::DirectoryObject base, const ldap::StoreOpener& opener);

  /// The container whose objects are listed; null when there is none, which is so while a refresh
  /// is under way.
  [[nodiscard]] const session::DirectoryObject* Container() const;
  /// What an action on objects concerns now: the objects selected in the list or, when the tree was
  /// used last or nothing is selected there, the container.
  [[nodiscard]] std::vector<session::DirectoryObject> Selection() const;
  [[nodiscard]] bool HasParent() const;

  /// Goes to the container above, and to one right below the current one.
  void GoToParent();
  void GoToChild(const std::string& dn);
  /// Reads the containers and the list anew, and leads back to where it was.
  void Refresh();
  /// Reads the list anew; what it shows stays until everything has arrived.
  void RefreshList();
  /// Shows what the directory keeps for an advanced view, too, or no longer.
  void ShowAdvanced(bool advanced);
  /// An object that is to be selected when the list has been read.
  void SelectWhenRead(std::string dn) { select_when_read_ = std::move(dn); }

  /// Whether anything is being read.
  [[nodiscard]] bool IsReading() const;
  /// Ends the reading of the list, which keeps what it shows.
  void StopReading();
  [[nodiscard]] ContainerListing::State state() const { return listing_->state(); }
  /// How much of the container is listed, in words.
  [[nodiscard]] QString CountText() const;

  [[nodiscard]] QTreeView& tree() const { return *tree_; }
  [[nodiscard]] ObjectListPane& list() const { return *list_; }

  /// Something else is shown, selected or used than before.
  std::function<void()> on_changed;
  /// Something cannot be read, and why.
  std::function<void(const QString& text, const QString& reason)> on_failure;

 private:
  void MakeTree();
  void MakeListing();
  void Changed() const;
  void Failed(const QString& container, const QString& reason) const;
  void ShowContainer();
  /// Goes down from `container` by the names of containers, each below the one before.
  void FollowPath(const QModelIndex& container, std::vector<std::string> path);

  /// One for the tree and one for the list: neither waits for the other.
  std::unique_ptr<DirectoryReader> tree_reader_;
  std::unique_ptr<DirectoryReader> list_reader_;
  std::unique_ptr<ContainerTreeModel> tree_model_;
  std::optional<ContainerListing> listing_;
  QTreeView* tree_ = nullptr;
  ObjectListPane* list_ = nullptr;
  bool is_advanced_ = false;
  bool tree_used_last_ = false;
  /// Where the last refresh leads.
  std::vector<std::string> refreshed_path_;
  /// Empty: none.
  std::string select_when_read_;
};

}  // namespace pelora::console
