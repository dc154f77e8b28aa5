// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <span>

#include "hosts/session/writing_desk.h"

class QCheckBox;
class QPlainTextEdit;
class QTableView;

namespace pelora::console {

class ResultModel;

/// Shows what became of many objects, and offers to try again what is left (accepted) and to save a
/// report.
class ResultDialog final : public QDialog {
 public:
  /// `results` outlive the dialog.
  ResultDialog(std::span<const session::WrittenChange> results, QWidget* parent);

  /// Writes the report, one result a line; a sentence when it cannot be written.
  [[nodiscard]] QString WriteReport(const QString& path) const;

 private:
  void MakeTable();
  /// The room that an outcome takes.
  [[nodiscard]] int WidestWord() const;
  void ShowReason();
  void SaveReport();

  std::span<const session::WrittenChange> results_;
  ResultModel* model_ = nullptr;
  QTableView* table_ = nullptr;
  QPlainTextEdit* reason_ = nullptr;
};

}  // namespace pelora::console
