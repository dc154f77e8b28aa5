// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLineEdit>

namespace pelora::console {

/// A line in which is written what is to be found. Lists can be pasted into it: a line break, which
/// a line has no place for, becomes a semicolon.
class ListLine final : public QLineEdit {
 public:
  explicit ListLine(QWidget* parent);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace pelora::console
