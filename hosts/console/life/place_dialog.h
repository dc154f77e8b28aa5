// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>

#include "hosts/session/life/place_words.h"

class QLineEdit;
class QPushButton;
class QTableWidget;

namespace pelora::console {

/// Asks before objects are renamed, moved or deleted: what goes along, what refers to them, and
/// whether it can be taken back. Where a name has to be typed, the button waits for it.
class PlaceDialog final : public QDialog {
 public:
  explicit PlaceDialog(const session::PlaceQuestion& question, QWidget* parent);

 private:
  void MakeTable(const session::PlaceQuestion& question);

  QTableWidget* table_ = nullptr;
  QLineEdit* typed_ = nullptr;
  QPushButton* go_on_ = nullptr;
};

}  // namespace pelora::console
