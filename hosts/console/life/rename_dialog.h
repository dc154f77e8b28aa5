// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>

class QLineEdit;

namespace pelora::console {

/// Asks what an object is to be called.
class RenameDialog final : public QDialog {
 public:
  RenameDialog(const QString& name, QWidget* parent);

  [[nodiscard]] QString Name() const;

 private:
  QLineEdit* name_ = nullptr;
};

}  // namespace pelora::console
