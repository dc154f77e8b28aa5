// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/new_object/pattern_dialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "hosts/console/dialogs/hint_label.h"
#include "hosts/console/dialogs/name_label.h"
#include "hosts/console/dialogs/on_screen.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"

namespace pelora::console {
namespace {

/// In average characters.
constexpr int kWidth = 64;
constexpr int kSaidLines = 2;

/// Somebody to show patterns with, where nobody has been written yet.
session::OwnValues Named(session::OwnValues example) {
  const bool is_named = !example.first_name.empty() && !example.last_name.empty();
  if (!is_named) {
    example.first_name = "Ada";
    example.last_name = "Meyer";
    example.name = "Ada Meyer";
  }
  if (example.logon_name.empty()) example.logon_name = "ada";
  return example;
}

}  // namespace

PatternDialog::PatternDialog(const session::NamePatterns& patterns, const QString& company,
                             session::OwnValues example, QWidget* parent)
    : QDialog(parent), example_(Named(std::move(example))) {
  setObjectName(QStringLiteral("pattern_dialog"));
  setWindowTitle(QStringLiteral("Patterns for New Users"));
  auto* const whose = new NameLabel(this);
  whose->setText(QStringLiteral("Kept for:  %1").arg(Readable(company)));
  logon_name_ =
      AddEdit("pattern_logon_name", patterns.logon_name, QStringLiteral("{first}.{last}"));
  address_ =
      AddEdit("pattern_address", patterns.address, QStringLiteral("{first}.{last}@example.org"));
  auto* const note = new QLabel(
      QStringLiteral("{first}, {last} and {name} stand for the names, {logon} in an address for "
                     "the logon name, all in small letters of a to z. What is empty follows "
                     "nothing."),
      this);
  note->setWordWrap(true);
  said_ = new HintLabel("pattern_said", kSaidLines, this);
  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  keep_ = buttons->addButton(QStringLiteral("&Keep"), QDialogButtonBox::AcceptRole);
  keep_->setObjectName(QStringLiteral("pattern_keep"));
  keep_->setDefault(true);
  connect(buttons, &QDialogButtonBox::accepted, this, &PatternDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &PatternDialog::reject);
  auto* const form = new QFormLayout;
  form->addRow(QStringLiteral("&Logon name:"), logon_name_);
  form->addRow(QStringLiteral("E-mail &address:"), address_);
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(whose);
  layout->addLayout(form);
  layout->addWidget(note);
  layout->addWidget(said_);
  layout->addWidget(buttons);
  Update();
  ResizeToTexts(*this, kWidth);
}

QLineEdit* PatternDialog::AddEdit(const char* name, const std::string& text,
                                  const QString& placeholder) {
  auto* const edit = new QLineEdit(ToQString(text), this);
  edit->setObjectName(QLatin1String(name));
  edit->setPlaceholderText(placeholder);
  connect(edit, &QLineEdit::textChanged, this, &PatternDialog::Update);
  return edit;
}

session::NamePatterns PatternDialog::Patterns() const {
  return {.logon_name = ToUtf8(logon_name_->text().trimmed()),
          .address = ToUtf8(address_->text().trimmed())};
}

void PatternDialog::Update() {
  // While the first field is made there is no second one.
  if (keep_ == nullptr) return;
  const session::NamePatterns patterns = Patterns();
  const QString wrong = ToQString(session::WhyWrong(patterns));
  keep_->setEnabled(wrong.isEmpty());
  if (!wrong.isEmpty()) return said_->Say(wrong);
  session::OwnValues example = example_;
  QStringList made;
  const std::string logon_name =
      session::LogonNameOf(patterns, session::NewObjectKinds().front(), example);
  if (!logon_name.empty()) example.logon_name = logon_name;
  for (const std::string& text : {logon_name, session::AddressOf(patterns, example)}) {
    if (!text.empty()) made.append(ToQString(text));
  }
  said_->Say(made.isEmpty() ? QStringLiteral("Nothing follows.")
                            : QStringLiteral("%1 gets: %2")
                                  .arg(ToQString(example.name), made.join(QStringLiteral("  "))));
}

}  // namespace pelora::console
