// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>

#include "hosts/session/writing_desk.h"

class QPlainTextEdit;
class QPushButton;
class QTabWidget;
class QTableView;

namespace pelora::console {

class ReviewModel;

/// Shows what is about to be written, as a table and as LDIF; objects are taken out by their boxes.
class ReviewDialog final : public QDialog {
 public:
  /// `review` outlives the dialog, which sets in it what is wanted.
  ReviewDialog(session::Review& review, QWidget* parent);
  ~ReviewDialog() override;

 private:
  void MakeTable();
  void ShowCount();
  void ShowLdif();

  session::Review& review_;
  ReviewModel* model_ = nullptr;
  QTabWidget* tabs_ = nullptr;
  QTableView* table_ = nullptr;
  QPlainTextEdit* ldif_ = nullptr;
  QPushButton* write_ = nullptr;
};

}  // namespace pelora::console
