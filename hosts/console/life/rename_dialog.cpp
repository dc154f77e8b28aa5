// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/life/rename_dialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "hosts/console/dialogs/on_screen.h"

namespace pelora::console {
namespace {

/// In average characters.
constexpr int kWidth = 56;
/// What a directory takes as a name.
constexpr int kLongestName = 64;

}  // namespace

RenameDialog::RenameDialog(const QString& name, QWidget* parent)
    : QDialog(parent), name_(new QLineEdit(name, this)) {
  setObjectName(QStringLiteral("rename_dialog"));
  setWindowTitle(QStringLiteral("Rename"));
  name_->setObjectName(QStringLiteral("new_name"));
  // A name that is longer already can be shortened, and need not be.
  name_->setMaxLength(std::max(kLongestName, static_cast<int>(name.size())));
  name_->selectAll();
  auto* note = new QLabel(
      QStringLiteral("This is the name in the directory. The display name, the logon name and the "
                     "addresses stay as they are."),
      this);
  note->setWordWrap(true);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  QPushButton* rename = buttons->addButton(QStringLiteral("&Rename"), QDialogButtonBox::AcceptRole);
  rename->setObjectName(QStringLiteral("rename_ok"));
  rename->setDefault(true);
  rename->setEnabled(false);
  connect(name_, &QLineEdit::textChanged, this,
          [this, rename, name] { rename->setEnabled(!Name().isEmpty() && Name() != name); });
  connect(buttons, &QDialogButtonBox::accepted, this, &RenameDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &RenameDialog::reject);
  auto* form = new QFormLayout;
  form->addRow(QStringLiteral("&New name:"), name_);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addWidget(note);
  layout->addWidget(buttons);
  name_->setFocus();
  ResizeToTexts(*this, kWidth);
}

QString RenameDialog::Name() const { return name_->text().trimmed(); }

}  // namespace pelora::console
