// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/attributes/attribute_dialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "hosts/console/dialogs/hint_label.h"
#include "hosts/console/dialogs/on_screen.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"

namespace pelora::console {
namespace {

using session::ValueForm;

/// In average characters.
constexpr int kWidth = 64;
constexpr int kTextLines = 8;
constexpr int kHintLines = 2;

QString Asked(const session::EditableAttribute& edited) {
  if (edited.form == ValueForm::kLines) return QStringLiteral("&Values, one in each line:");
  if (edited.form == ValueForm::kNumber) return QStringLiteral("&Value, a number:");
  return QStringLiteral("&Value:");
}

}  // namespace

AttributeDialog::AttributeDialog(session::EditableAttribute edited, const AttributeEditor& editor,
                                 QWidget* parent)
    : QDialog(parent), edited_(std::move(edited)), editor_(editor) {
  setObjectName(QStringLiteral("attribute"));
  SetPlainTitle(*this, ToQString(edited_.attribute));
  QWidget* const field = MakeField();
  field->setObjectName(QStringLiteral("attribute_value"));
  auto* const label = new QLabel(Asked(edited_), this);
  label->setBuddy(field);
  field->setAccessibleName(ToQString(edited_.attribute));
  hint_ = new HintLabel("attribute_hint", kHintLines, this);
  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  write_ = buttons->addButton(QStringLiteral("&Write"), QDialogButtonBox::AcceptRole);
  write_->setObjectName(QStringLiteral("attribute_write"));
  write_->setDefault(true);
  connect(buttons, &QDialogButtonBox::accepted, this, &AttributeDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &AttributeDialog::reject);
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(label);
  layout->addWidget(field, 1);
  layout->addWidget(hint_);
  layout->addWidget(buttons);
  field->setFocus();
  OnTyped();
  ResizeToTexts(*this, kWidth);
}

QWidget* AttributeDialog::MakeField() {
  const QString text = ToQString(TextOf(edited_));
  if (edited_.form == ValueForm::kBoolean) {
    boolean_ = new QComboBox(this);
    boolean_->addItems(
        {QStringLiteral("not set"), QStringLiteral("TRUE"), QStringLiteral("FALSE")});
    boolean_->setCurrentIndex(std::max(0, boolean_->findText(text)));
    connect(boolean_, &QComboBox::currentIndexChanged, this, [this] { OnTyped(); });
    return boolean_;
  }
  if (edited_.form == ValueForm::kNumber) {
    number_ = new QLineEdit(text, this);
    connect(number_, &QLineEdit::textChanged, this, [this] { OnTyped(); });
    return number_;
  }
  text_ = new QPlainTextEdit(text, this);
  text_->setTabChangesFocus(true);
  text_->setMinimumHeight(kTextLines * fontMetrics().lineSpacing());
  connect(text_, &QPlainTextEdit::textChanged, this, [this] { OnTyped(); });
  return text_;
}

std::string AttributeDialog::Typed() const {
  if (text_ != nullptr) return ToUtf8(text_->toPlainText());
  if (number_ != nullptr) return ToUtf8(number_->text());
  return boolean_->currentIndex() == 0 ? std::string() : ToUtf8(boolean_->currentText());
}

void AttributeDialog::OnTyped() {
  if (write_ == nullptr) return;
  const ldap::AttributeValues values = ValuesOf(edited_, Typed());
  const std::string why = editor_.why_not_taken(edited_.attribute, values);
  hint_->Say(ToQString(why));
  write_->setEnabled(why.empty() && values != edited_.values);
}

void AttributeDialog::accept() {
  if (!write_->isEnabled()) return;
  if (editor_.write(edited_, ValuesOf(edited_, Typed()))) QDialog::accept();
}

}  // namespace pelora::console
