// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/password/reset_password_dialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "hosts/console/dialogs/hint_label.h"
#include "hosts/console/dialogs/mnemonics.h"
#include "hosts/console/dialogs/on_screen.h"
#include "hosts/console/dialogs/qt_dialog.h"
#include "hosts/console/password/secret_field.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/session/folder_name.h"

namespace pelora::console {
namespace {

/// In average characters.
constexpr int kWidth = 64;
/// A reason may need so many; the window does not jump for it.
constexpr int kHintLines = 3;

}  // namespace

ResetPasswordDialog::ResetPasswordDialog(const QString& name, session::PasswordRules rules,
                                         Give give, QWidget* parent)
    : QDialog(parent), rules_(rules), give_(std::move(give)) {
  setObjectName(QStringLiteral("reset_password"));
  SetPlainTitle(*this, QStringLiteral("Reset Password of %1").arg(name));
  auto* const form = new QFormLayout;
  password_ = AddField(*form, QStringLiteral("&New password:"), "new_password");
  again_ = AddField(*form, QStringLiteral("Once &more:"), "new_password_again");
  must_change_ =
      new QCheckBox(QStringLiteral("The password must be changed at the next &logon"), this);
  must_change_->setObjectName(QStringLiteral("new_password_must_change"));
  must_change_->setChecked(true);
  form->addRow(must_change_);
  auto* const layout = new QVBoxLayout(this);
  layout->addLayout(form);
  if (const std::string asked = TextOf(rules_); !asked.empty()) {
    auto* const said = new HintLabel("password_rules", 1, this);
    said->Say(ToQString(asked));
    layout->addWidget(said);
  }
  hint_ = new HintLabel("password_hint", kHintLines, this);
  layout->addWidget(hint_);
  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  reset_ = buttons->addButton(QStringLiteral("&Reset"), QDialogButtonBox::AcceptRole);
  reset_->setObjectName(QStringLiteral("reset_password_ok"));
  reset_->setDefault(true);
  connect(buttons, &QDialogButtonBox::accepted, this, &ResetPasswordDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &ResetPasswordDialog::reject);
  layout->addStretch();
  layout->addWidget(buttons);
  password_->setFocus();
  OnTyped();
  ResizeToTexts(*this, kWidth);
}

ResetPasswordDialog::~ResetPasswordDialog() {
  for (const QLineEdit* const field : {password_, again_}) WipeField(*field);
}

QLineEdit* ResetPasswordDialog::AddField(QFormLayout& form, const QString& label,
                                         const char* name) {
  auto* const field = new QLineEdit(this);
  field->setObjectName(QLatin1String(name));
  field->setAccessibleName(WithoutMnemonic(label));
  field->setEchoMode(QLineEdit::Password);
  form.addRow(label, field);
  connect(field, &QLineEdit::textChanged, this, [this] { OnTyped(); });
  return field;
}

bool ResetPasswordDialog::MustChange() const { return must_change_->isChecked(); }

std::string ResetPasswordDialog::WhyNotReady() const {
  if (password_->text().isEmpty()) return "Type the new password, twice.";
  if (std::string why = WhyNotFit(rules_, SecretOf(*password_)); !why.empty()) return why;
  if (password_->text() != again_->text()) return "The passwords must match.";
  return {};
}

void ResetPasswordDialog::OnTyped() {
  if (reset_ == nullptr) return;
  const bool is_empty = password_->text().isEmpty() && again_->text().isEmpty();
  if (is_empty) guard_.reset();
  if (!is_empty && !guard_) guard_.emplace();
  const std::string why = WhyNotReady();
  hint_->Say(ToQString(why));
  reset_->setEnabled(why.empty());
}

void ResetPasswordDialog::accept() {
  if (!WhyNotReady().empty()) return;
  const std::string reason = give_(SecretOf(*password_), MustChange());
  if (reason.empty()) return QDialog::accept();
  hint_->Say(ToQString(reason));
  password_->setFocus();
  password_->selectAll();
}

session::PasswordGiven AskForPassword(ldap::IDirectoryStore& store, session::IErrands& errands,
                                      const std::string& dn, QWidget* parent) {
  using session::PasswordGiven;
  const std::string name = session::OwnNameOf(dn);
  session::PasswordRules rules;
  errands.Run("Asking what passwords have to be like...", [&](session::IErrand& errand) {
    store.StopOn(errand.stop());
    rules = session::ReadPasswordRules(store, dn);
    store.StopOn({});
  });
  const auto give = [&](const session::Secret& password, bool must_change) {
    ldap::StoreStatus status;
    errands.Run("Resetting the password of " + name + "...", [&](session::IErrand& errand) {
      store.StopOn(errand.give_up());
      status = session::ResetPassword(store, dn, password, must_change);
      store.StopOn({});
    });
    return status.Ok() ? std::string() : session::WhyNotReset(status);
  };
  ResetPasswordDialog dialog(ToQString(name), rules, give, parent);
  if (RunModal(dialog) != QDialog::Accepted) return PasswordGiven::kNo;
  return dialog.MustChange() ? PasswordGiven::kYesToBeChanged : PasswordGiven::kYes;
}

}  // namespace pelora::console
