// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/life/place_dialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "hosts/console/dialogs/name_label.h"
#include "hosts/console/dialogs/on_screen.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/writing/tables.h"

namespace pelora::console {
namespace {

constexpr QSize kWantedSize(640, 420);
/// In average characters.
constexpr int kWidth = 68;
/// Longer names are not repeated before the line in which they are typed.
constexpr int kLongestAsked = 24;

QLabel* MakeLabel(const std::string& text, const char* name, QWidget* parent) {
  auto* label = new NameLabel(parent);
  label->setText(Readable(ToQString(text)));
  label->setObjectName(QLatin1String(name));
  label->setWordWrap(true);
  return label;
}

/// What has to be typed for that name: a name in which there is something that nobody can type, or
/// that is not shown to its end, would keep everybody from going on.
QString ToBeTyped(const std::string& name) {
  const QString typed = ToQString(name).trimmed();
  const bool can_be_typed =
      !typed.isEmpty() && Readable(typed) == typed && !typed.contains(QLatin1Char('\n')) &&
      !typed.contains(QLatin1Char('\t')) && !typed.contains(QChar(QChar::ReplacementCharacter));
  return can_be_typed ? typed : QStringLiteral("delete");
}

}  // namespace

PlaceDialog::PlaceDialog(const session::PlaceQuestion& question, QWidget* parent)
    : QDialog(parent) {
  setObjectName(QStringLiteral("place_question"));
  setWindowTitle(ToQString(question.title));
  auto* layout = new QVBoxLayout(this);
  QLabel* text = MakeLabel(question.text, "place_text", this);
  QFont bold = text->font();
  bold.setBold(true);
  text->setFont(bold);
  layout->addWidget(text);
  for (const std::string& note : question.notes) {
    layout->addWidget(MakeLabel(note, "place_note", this));
  }
  if (!question.references.empty()) {
    layout->addWidget(MakeLabel(question.about_references, "place_about_references", this));
    MakeTable(question);
    auto* label = new QLabel(QStringLiteral("Re&ferences:"), this);
    label->setBuddy(table_);
    layout->addWidget(label);
    layout->addWidget(table_, 1);
  }
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  go_on_ = buttons->addButton(ToQString(question.button), QDialogButtonBox::AcceptRole);
  go_on_->setObjectName(QStringLiteral("place_go_on"));
  if (!question.to_type.empty()) {
    const QString wanted = ToBeTyped(question.to_type);
    typed_ = new QLineEdit(this);
    typed_->setObjectName(QStringLiteral("place_typed"));
    // A long name stands above, where there is room for it.
    const QString what = wanted.size() > kLongestAsked ? QStringLiteral("this name")
                                                       : QStringLiteral("\"%1\"").arg(wanted);
    auto* label =
        new QLabel(QStringLiteral("&Type %1 to go on:").arg(AsPlainLabel(Readable(what))), this);
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(typed_);
    layout->addWidget(label);
    layout->addWidget(typed_);
    go_on_->setEnabled(false);
    connect(typed_, &QLineEdit::textChanged, this, [this, wanted](const QString& typed) {
      go_on_->setEnabled(typed.trimmed() == wanted);
    });
  }
  layout->addWidget(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &PlaceDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &PlaceDialog::reject);
  // Enter is not to delete what somebody has only looked at.
  QPushButton* const cancel = buttons->button(QDialogButtonBox::Cancel);
  cancel->setDefault(typed_ == nullptr);
  if (typed_ != nullptr) go_on_->setDefault(true);
  if (table_ != nullptr) {
    ResizeToFit(*this, kWantedSize);
  } else {
    ResizeToTexts(*this, kWidth);
  }
  (typed_ != nullptr ? static_cast<QWidget*>(typed_) : cancel)->setFocus();
}

void PlaceDialog::MakeTable(const session::PlaceQuestion& question) {
  const QStringList headings = {QStringLiteral("Object"), QStringLiteral("Field"),
                                QStringLiteral("Names")};
  table_ = new QTableWidget(static_cast<int>(question.references.size()),
                            static_cast<int>(headings.size()), this);
  table_->setObjectName(QStringLiteral("place_references"));
  table_->setAccessibleName(QStringLiteral("What refers to it"));
  table_->setHorizontalHeaderLabels(headings);
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  SetUpTable(*table_, *table_->model());
  int row = 0;
  for (const session::Reference& reference : question.references) {
    int column = 0;
    for (const std::string* cell : {&reference.holder, &reference.field, &reference.target}) {
      auto* item = new QTableWidgetItem(Readable(ToQString(*cell)).simplified());
      item->setToolTip(
          PlainToolTip(ToQString(cell == &reference.holder ? reference.holder_dn : *cell)));
      table_->setItem(row, column++, item);
    }
    ++row;
  }
}

}  // namespace pelora::console
