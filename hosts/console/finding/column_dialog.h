// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <string>
#include <vector>

#include "hosts/session/find/list_columns.h"

class QLineEdit;
class QListWidget;

namespace pelora::console {

/// Lets the user choose what a list shows of each object: those that are chosen stand first, in
/// their order, and can be moved up and down.
class ColumnDialog final : public QDialog {
 public:
  ColumnDialog(const std::vector<session::ListColumn>& all, const std::vector<std::string>& chosen,
               QWidget* parent);

  /// `ListColumn::name` of the chosen columns, in their order.
  [[nodiscard]] std::vector<std::string> Chosen() const;

 private:
  void Move(int rows);

  QLineEdit* filter_;
  QListWidget* list_;
};

}  // namespace pelora::console
