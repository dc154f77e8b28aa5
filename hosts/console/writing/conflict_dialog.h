// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <vector>

#include "hosts/session/writing_desk.h"

class QComboBox;
class QTableWidget;

namespace pelora::console {

/// Asks what is to become of fields that somebody else changed meanwhile, one by one or all at
/// once. Nothing is decided before it is accepted.
class ConflictDialog final : public QDialog {
 public:
  /// `conflicts` outlive the dialog, which sets the choices in them when it is accepted.
  ConflictDialog(std::vector<session::ShownConflict>& conflicts, QWidget* parent);

  void accept() override;

 private:
  using Choice = session::ShownConflict::Choice;

  void MakeTable();
  void AddRow(int row, const session::ShownConflict& conflict);
  void ChooseForAll(Choice choice);

  std::vector<session::ShownConflict>& conflicts_;
  QTableWidget* table_ = nullptr;
  std::vector<QComboBox*> choices_;
};

}  // namespace pelora::console
