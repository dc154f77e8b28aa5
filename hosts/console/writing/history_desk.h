// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "hosts/session/change_history.h"
#include "hosts/session/errands.h"

class QWidget;

namespace pelora::console {

/// Where what was written is taken back and done again: what was last, or what is chosen from the
/// list of it. What became of it is told; what was refused can be tried again.
class HistoryDesk final {
 public:
  /// Both outlive the desk. Dialogs belong to `window`.
  HistoryDesk(QWidget& window, session::IErrands& errands) : window_(window), errands_(errands) {}

  /// The directory that is worked with from now on. Both outlive the desk, or the next one; null:
  /// there is none, and nothing to take back.
  void SetDirectory(session::ChangeHistory* history, ldap::IDirectoryStore* store);

  void UndoLast();
  void RedoLast();
  void ShowList();

  /// Told in a few words what was done, or that there is nothing to do.
  std::function<void(const QString& text)> on_told;
  /// Something may be another in the directory now.
  std::function<void()> on_written;

 private:
  [[nodiscard]] std::vector<session::PastChange> List();
  /// Takes a go back, or does it again, and tells what became of it.
  void TakeBack(const session::PastChange& past, bool again);

  QWidget& window_;
  session::IErrands& errands_;
  session::ChangeHistory* history_ = nullptr;
  ldap::IDirectoryStore* store_ = nullptr;
};

}  // namespace pelora::console
