// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <string>
#include <vector>

#include "hosts/console/window/object_list_pane.h"
#include "hosts/session/find/list_columns.h"

class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QSpinBox;

namespace pelora::console {

/// Lets the user choose what a list shows of each object, and how wide: those that are chosen stand
/// first, in their order, and can be moved up and down. The name is always there, and first.
class ColumnDialog final : public QDialog {
 public:
  /// `lying`: those that are shown, from the left.
  ColumnDialog(const std::vector<session::ListColumn>& all, const std::vector<LyingColumn>& lying,
               QWidget* parent);

  /// `ListColumn::name` of the chosen columns, in their order; without the name.
  [[nodiscard]] std::vector<std::string> Chosen() const;
  /// How wide they are to be, and the name.
  [[nodiscard]] std::vector<LyingColumn> Widths() const;

 private:
  void Add(const session::ListColumn& column, bool is_chosen, int width);
  void MakeLayout();
  void Move(int rows);
  [[nodiscard]] bool IsFixed(int row) const;
  void ShowWidth();

  QLineEdit* filter_;
  QListWidget* list_;
  QSpinBox* width_;
};

}  // namespace pelora::console
