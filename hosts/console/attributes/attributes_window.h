// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <functional>
#include <vector>

#include "hosts/session/attribute_rows.h"

class QLineEdit;
class QTableWidget;

namespace pelora::console {

/// Everything that the directory has of an object, for those who know its attributes: to be looked
/// through, narrowed and copied, not to be changed. It goes when it is closed.
class AttributesWindow final : public QDialog {
 public:
  /// Reads the rows anew; nothing when they cannot be read, which has been told then.
  using Reader = std::function<std::vector<session::AttributeRow>()>;

  AttributesWindow(const QString& name, Reader read, QWidget* parent);

 private:
  void MakeTable();
  void Fill();
  void Narrow();
  /// Copies the selected rows, or all that are shown.
  void Copy();

  Reader read_;
  std::vector<session::AttributeRow> rows_;
  QTableWidget* table_ = nullptr;
  QLineEdit* filter_ = nullptr;
};

}  // namespace pelora::console
