// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <QTimer>
#include <cstddef>

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
  /// So many objects' LDIF is shown at once; there may be thousands, and the rest follows in turns.
  static constexpr std::size_t kLdifAtOnce = 50;

  /// `review` outlives the dialog, which sets in it what is wanted.
  ReviewDialog(session::Review& review, QWidget* parent);
  ~ReviewDialog() override;

 private:
  void MakeTable();
  void ShowCount();
  void ShowLdif();
  void AddLdif();

  session::Review& review_;
  ReviewModel* model_ = nullptr;
  QTabWidget* tabs_ = nullptr;
  QTableView* table_ = nullptr;
  QPlainTextEdit* ldif_ = nullptr;
  QPushButton* write_ = nullptr;
  /// How far the LDIF is, and what brings the rest.
  std::size_t next_in_ldif_ = 0;
  QTimer ldif_turns_;
};

}  // namespace pelora::console
