// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>

#include "hosts/console/choosers/found_object_model.h"
#include "hosts/console/choosers/object_search.h"

class QTreeView;

namespace pelora::console {

class NameLabel;

/// What a search query finds: how many objects, and the first hundred of them. The search runs
/// beside the window and ends with it.
class QueryPreview final : public QDialog {
  Q_OBJECT

 public:
  /// The query's limit does not count.
  QueryPreview(session::ObjectQuery query, ldap::StoreOpener opener, QWidget* parent);
  ~QueryPreview() override;

  /// How many objects were found until now.
  [[nodiscard]] std::size_t Count() const { return count_; }
  [[nodiscard]] bool IsSearching() const { return search_.IsRunning(); }

 private:
  void OnFound(std::vector<session::FoundObject> objects);
  void ShowCount(const QString& end);

  FoundObjectModel* found_;
  QTreeView* results_ = nullptr;
  NameLabel* status_ = nullptr;
  std::size_t count_ = 0;
  ObjectSearch search_;
};

}  // namespace pelora::console
