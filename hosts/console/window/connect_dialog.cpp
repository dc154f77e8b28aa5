// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/window/connect_dialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "hosts/console/dialogs/on_screen.h"
#include "hosts/console/text/plain_text.h"

namespace pelora::console {
namespace {

/// In average characters.
constexpr int kWidth = 56;

}  // namespace

ConnectDialog::ConnectDialog(const QString& server, QWidget* parent)
    : QDialog(parent), server_(new QLineEdit(server, this)) {
  setObjectName(QStringLiteral("connect_dialog"));
  setWindowTitle(QStringLiteral("Connect to Domain"));
  server_->setPlaceholderText(QStringLiteral("Any server of the domain of your ticket"));
  server_->setClearButtonEnabled(true);
  server_->selectAll();

  auto* note = new QLabel(
      QStringLiteral("The full name of a domain controller, such as dc1.example.test. The "
                     "connection is signed and sealed with your Kerberos ticket: kinit gets one."),
      this);
  note->setWordWrap(true);
  ShowPlainly(*note);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  buttons->addButton(QStringLiteral("C&onnect"), QDialogButtonBox::AcceptRole)->setDefault(true);
  connect(buttons, &QDialogButtonBox::accepted, this, &ConnectDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &ConnectDialog::reject);

  auto* form = new QFormLayout;
  form->addRow(QStringLiteral("&Server:"), server_);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addWidget(note);
  layout->addWidget(buttons);
  ResizeToTexts(*this, kWidth);
}

QString ConnectDialog::Server() const { return server_->text().trimmed(); }

}  // namespace pelora::console
