// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QSplitter>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "hosts/console/finding/find_bar.h"
#include "hosts/console/finding/remembered.h"
#include "hosts/console/finding/view_actions.h"
#include "hosts/console/window/container_listing.h"
#include "hosts/console/window/container_tree_model.h"
#include "hosts/console/window/object_list_pane.h"

class QTreeView;

namespace pelora::console {

/// A directory on the screen: the tree of its containers on the left, on the right the objects of
/// the current one, or what is found; both read beside the user interface.
class DirectoryPane final : public QSplitter {
 public:
  explicit DirectoryPane(QWidget* parent);
  ~DirectoryPane() override;

  /// Shows a directory from its base on, in place of the one shown before. `opener` opens it for
  /// use on the pane's own threads; the objects' fields outlive the pane or `EndDirectory`. Without
  /// fields only what every object has can be shown.
  void ShowDirectory(session::DirectoryObject base, const ldap::StoreOpener& opener,
                     session::FieldCatalogue* fields = nullptr);
  /// Ends all reading of objects, before their fields go.
  void EndDirectory();

  /// Puts the keyboard into the line in which one types what is to be found.
  void Find();
  /// Shows a view, "NAME" or "NAME=ANSWER". A sentence when there is none; empty otherwise.
  [[nodiscard]] QString ShowView(const QString& view);
  /// What is shown, as a view that can be kept.
  [[nodiscard]] session::View ShownView() const;
  /// Lets the user choose the columns of what is shown, which are remembered.
  void ChooseColumns();

  /// The container whose objects are listed; null when there is none, which is so while a refresh
  /// is under way.
  [[nodiscard]] const session::DirectoryObject* Container() const;
  /// Where a new object is to be made: in the one container that is selected in the list, or else
  /// in the one that is shown; null when there is none.
  [[nodiscard]] std::optional<session::DirectoryObject> PlaceForNew() const;
  /// What an action on objects concerns now: the objects selected in the list or, when the tree was
  /// used last or nothing is selected there, the container.
  [[nodiscard]] std::vector<session::DirectoryObject> Selection() const;
  [[nodiscard]] bool HasParent() const;

  /// Goes to the container above, to one right below the current one, and to any other.
  void GoToParent();
  void GoToChild(const std::string& dn);
  void GoTo(const std::string& dn);
  /// Reads the containers and the list anew, and leads back to where it was.
  void Refresh();
  /// The same, and leads to another container, or as far down to it as there is a way.
  void RefreshAt(const std::string& dn);
  /// Goes to a container where an earlier window was, as far down to it as there is a way. What is
  /// asked for meanwhile stays.
  void Recall(const std::string& dn);
  /// Reads the list anew; what it shows stays until everything has arrived.
  void RefreshList();
  /// Shows what the directory keeps for an advanced view, too, or no longer.
  void ShowAdvanced(bool advanced);
  /// Objects that are dropped on a container, in the tree or in the list, are given to `take`.
  void TakeDrops(
      std::function<void(const std::vector<std::string>& dns, const std::string& container)> take);
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
  [[nodiscard]] FindBar& find() const { return *find_; }
  [[nodiscard]] Remembered& remembered() { return remembered_; }
  [[nodiscard]] const ViewActions& view_actions() const { return *view_actions_; }

  /// Something else is shown, selected or used than before.
  std::function<void()> on_changed;
  /// Something cannot be read, and why.
  std::function<void(const QString& text, const QString& reason)> on_failure;

 private:
  void MakeTree();
  void MakeListing();
  void Changed() const;
  /// Why the list shows no object, in words; empty while some may still come.
  [[nodiscard]] QString EmptyText() const;
  void Failed(const QString& container, const QString& reason) const;
  void MakeFind();
  void ShowContainer();
  /// Lists what is asked for in the line above the list, or else the container.
  void ShowAsked();
  [[nodiscard]] ListOrder ContainerOrder() const;
  [[nodiscard]] ListOrder OrderOf(const session::View& view) const;
  /// Lists something under the name by which its columns are remembered.
  void List(ListOrder order, const QString& name);
  /// What was asked for by name is selected when it has been found: a single object, and all of a
  /// pasted list. What somebody has selected meanwhile stays.
  void SelectFound();
  void RememberLayout();
  /// The containers from right below the base down to one.
  [[nodiscard]] std::vector<std::string> PathTo(const std::string& dn) const;
  /// Goes down from `container` by the names of containers, each below the one before.
  void FollowPath(const QModelIndex& container, std::vector<std::string> path);

  /// One for the tree and one for the list: neither waits for the other.
  std::unique_ptr<DirectoryReader> tree_reader_;
  std::unique_ptr<DirectoryReader> list_reader_;
  std::unique_ptr<ContainerTreeModel> tree_model_;
  std::optional<ContainerListing> listing_;
  QTreeView* tree_ = nullptr;
  ObjectListPane* list_ = nullptr;
  FindBar* find_ = nullptr;
  ViewActions* view_actions_ = nullptr;
  Remembered remembered_;
  session::FieldCatalogue* fields_ = nullptr;
  /// What is listed is remembered under this name; its columns lay so when it was shown.
  QString listed_name_;
  QByteArray listed_layout_;
  /// Why what is asked cannot be found.
  QString answer_error_;
  std::string listed_container_;
  bool is_advanced_ = false;
  bool tree_used_last_ = false;
  /// On the way to the container of an earlier window.
  bool is_recalling_ = false;
  /// Where the last refresh leads.
  std::vector<std::string> refreshed_path_;
  /// Empty: none.
  std::string select_when_read_;
  bool select_found_ = false;
};

}  // namespace pelora::console
