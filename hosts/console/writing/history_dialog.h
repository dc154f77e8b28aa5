// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <functional>
#include <string>
#include <vector>

#include "hosts/session/change_history.h"

class QPushButton;
class QTableWidget;

namespace pelora::console {

/// Lists what was written, latest first, and offers to take it back or do it again.
class HistoryDialog final : public QDialog {
 public:
  /// Gives the list as it is by now.
  using Lister = std::function<std::vector<session::PastChange>()>;

  HistoryDialog(Lister list, QWidget* parent);

  /// A go is to be taken back, or done again; when they come back it is through.
  std::function<void(const session::PastChange& past)> on_undo;
  std::function<void(const session::PastChange& past)> on_redo;

 private:
  void MakeTable();
  void Fill();
  void UpdateButtons();
  [[nodiscard]] const session::PastChange* Current() const;
  void Do(const std::function<void(const session::PastChange& past)>& what);

  Lister list_;
  std::vector<session::PastChange> past_;
  QTableWidget* table_ = nullptr;
  QPushButton* undo_ = nullptr;
  QPushButton* redo_ = nullptr;
};

/// "Birgit Krämer, Rolf Uhlig and 3 more"; for people to read.
[[nodiscard]] QString Enumerated(const std::vector<std::string>& texts);

}  // namespace pelora::console
