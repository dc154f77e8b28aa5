// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <functional>
#include <string>
#include <vector>

#include "hosts/console/attributes/attribute_dialog.h"
#include "hosts/session/attribute_rows.h"

class QDialogButtonBox;
class QLineEdit;
class QPushButton;
class QTableWidget;

namespace pelora::console {

class NameLabel;

/// Everything that the directory has of an object, for those who know its attributes: to be looked
/// through, narrowed and copied. What can be edited as text is; of the rest it says why it is not.
/// It goes when it is closed.
class AttributesWindow final : public QDialog {
 public:
  /// Reads the rows anew; nothing when they cannot be read, which has been told then.
  using Reader = std::function<std::vector<session::AttributeRow>()>;

  /// Without an editor everything is to be read only.
  AttributesWindow(const QString& name, Reader read, QWidget* parent, AttributeEditor editor = {});

 private:
  void MakeTable();
  void MakeEditButtons(QDialogButtonBox& buttons);
  void Fill();
  void Narrow();
  /// Copies the selected rows, or all that are shown.
  void Copy();
  /// Says why the row with the keyboard cannot be edited.
  void ShowNote();
  void Edit();
  void SetAnother();
  void EditOne(const std::string& attribute);
  [[nodiscard]] std::string CurrentAttribute() const;

  Reader read_;
  AttributeEditor editor_;
  std::vector<session::AttributeRow> rows_;
  QTableWidget* table_ = nullptr;
  QLineEdit* filter_ = nullptr;
  NameLabel* note_ = nullptr;
  QPushButton* edit_ = nullptr;
};

}  // namespace pelora::console
