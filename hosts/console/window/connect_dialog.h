// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>

class QLineEdit;

namespace pelora::console {

/// Asks for the server of the domain that is to be shown.
class ConnectDialog final : public QDialog {
 public:
  /// `server` stands in the field at first.
  ConnectDialog(const QString& server, QWidget* parent);

  /// The server's name, without blanks around it; empty: the domain's own servers are to be found.
  [[nodiscard]] QString Server() const;

 private:
  QLineEdit* server_;
};

}  // namespace pelora::console
