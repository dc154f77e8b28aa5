// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <vector>

#include "hosts/console/writing/conflict_model.h"

class QPushButton;
class QTableView;

namespace pelora::console {

/// Asks what is to become of fields that somebody else changed meanwhile, one by one or all at
/// once. Nothing is decided before it is accepted.
///
/// There may be thousands: only the row with the keyboard has a list to choose from, to which Tab
/// goes from the table.
class ConflictDialog final : public QDialog {
 public:
  /// `conflicts` outlive the dialog, which sets the choices in them when it is accepted.
  ConflictDialog(std::vector<session::ShownConflict>& conflicts, QWidget* parent);

  void accept() override;

 private:
  using Choice = ConflictModel::Choice;

  void MakeTable();
  /// Puts the list to choose from into a row, and takes it from where it was.
  void OfferChoiceIn(int row, int before);
  void ChooseForAll(Choice choice);

  std::vector<session::ShownConflict>& conflicts_;
  ConflictModel* model_;
  QTableView* table_ = nullptr;
  QPushButton* theirs_ = nullptr;
};

}  // namespace pelora::console
