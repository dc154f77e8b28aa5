// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <functional>
#include <optional>
#include <string>

#include "hosts/session/errands.h"
#include "hosts/session/password/password_rules.h"
#include "hosts/session/password/reset_password.h"

class QCheckBox;
class QFormLayout;
class QLineEdit;
class QPushButton;

namespace pelora::console {

class HintLabel;

/// Asks for another password of one user, twice, and gives it to him. It says what the domain asks
/// for, and stays open with the directory's reason when the password was not taken.
///
/// What was typed is wiped when the dialog goes; meanwhile the program writes no core dump.
class ResetPasswordDialog final : public QDialog {
 public:
  /// Gives the password; the reason why it was not given, empty when it was.
  using Give = std::function<std::string(const session::Secret& password, bool must_change)>;

  ResetPasswordDialog(const QString& name, session::PasswordRules rules, Give give,
                      QWidget* parent);
  ~ResetPasswordDialog() override;

  [[nodiscard]] bool MustChange() const;

  /// Gives the password, and closes when it was taken.
  void accept() override;

 private:
  QLineEdit* AddField(QFormLayout& form, const QString& label, const char* name);
  void OnTyped();
  /// Why the button cannot be used; empty when it can.
  [[nodiscard]] std::string WhyNotReady() const;

  session::PasswordRules rules_;
  Give give_;
  QLineEdit* password_ = nullptr;
  QLineEdit* again_ = nullptr;
  QCheckBox* must_change_ = nullptr;
  HintLabel* hint_ = nullptr;
  QPushButton* reset_ = nullptr;
  std::optional<session::DumpGuard> guard_;
};

/// Runs the dialog for a user of a directory that takes passwords. Both outlive it.
[[nodiscard]] session::PasswordGiven AskForPassword(ldap::IDirectoryStore& store,
                                                    session::IErrands& errands,
                                                    const std::string& dn, QWidget* parent);

}  // namespace pelora::console
