// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <functional>
#include <string>

#include "hosts/console/window/container_tree_model.h"

class QTreeView;

namespace pelora::console {

class NameLabel;

/// Lets the administrator choose a container from the tree of the directory. What stands below a
/// container is read when it is opened.
class ContainerBrowser final : public QDialog {
 public:
  /// Says why a container cannot be taken; empty for one that can.
  using Refusal = std::function<QString(const std::string& dn)>;

  /// `opener` opens the directory for use on a thread of the dialog's.
  ContainerBrowser(ldap::StoreOpener opener, session::DirectoryObject base, Refusal refusal,
                   QWidget* parent);
  ~ContainerBrowser() override;

  /// The distinguished name of the chosen container.
  [[nodiscard]] std::string Chosen() const;

  /// Stays open where the container is refused, and says why.
  void accept() override;

 private:
  void MakeTree();

  Refusal refusal_;
  DirectoryReader reader_;
  ContainerTreeModel model_;
  QTreeView* tree_ = nullptr;
  NameLabel* status_ = nullptr;
};

}  // namespace pelora::console
