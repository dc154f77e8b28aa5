// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QObject>
#include <functional>
#include <vector>

#include "hosts/session/find/view.h"

class QAction;

namespace pelora::console {

class DirectoryPane;

/// What can be done with the list of objects as a list: columns, copies, tables, views.
class ViewActions final : public QObject {
 public:
  /// `pane` outlives the actions and is their parent.
  explicit ViewActions(DirectoryPane& pane);

  /// In the order of a menu; null for a line between them.
  [[nodiscard]] const QList<QAction*>& actions() const { return actions_; }

 private:
  void Add(const char* text, const char* keys, const char* tip, void (ViewActions::*slot)());
  void AddSeparator();

  void Copy();
  void CopyNames();
  void WriteTable();
  void SaveView();
  void DeleteView();
  void GiveViews();
  void TakeViews();
  /// Keeps the user's views; a failure is shown.
  bool Keep(std::vector<session::View> views);
  void Complain(const QString& text, const QString& reason) const;
  [[nodiscard]] QString AskForPath(bool saves, const char* title, const char* kinds) const;

  DirectoryPane& pane_;
  QList<QAction*> actions_;
  QAction* copy_names_ = nullptr;
};

}  // namespace pelora::console
