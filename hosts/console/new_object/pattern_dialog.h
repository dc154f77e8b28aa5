// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>

#include "hosts/session/commands/name_patterns.h"

class QLineEdit;
class QPushButton;

namespace pelora::console {

class HintLabel;

/// Asks what logon names and addresses of new users are made of. What is no pattern cannot be
/// kept, and the dialog says why.
class PatternDialog final : public QDialog {
 public:
  /// `company` is for whom they are kept; `example` is called as a new user is.
  PatternDialog(const session::NamePatterns& patterns, const QString& company,
                session::OwnValues example, QWidget* parent);

  [[nodiscard]] session::NamePatterns Patterns() const;

 private:
  QLineEdit* AddEdit(const char* name, const std::string& text, const QString& placeholder);
  void Update();

  session::OwnValues example_;
  QLineEdit* logon_name_ = nullptr;
  QLineEdit* address_ = nullptr;
  HintLabel* said_ = nullptr;
  QPushButton* keep_ = nullptr;
};

}  // namespace pelora::console
