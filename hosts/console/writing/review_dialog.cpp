// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/writing/review_dialog.h"

#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTextCursor>
#include <QVBoxLayout>

#include "hosts/console/dialogs/on_screen.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/writing/review_model.h"
#include "hosts/console/writing/tables.h"

namespace pelora::console {
namespace {

constexpr QSize kWantedSize(720, 420);
constexpr int kLdifTab = 1;

}  // namespace

ReviewDialog::ReviewDialog(session::Review& review, QWidget* parent)
    : QDialog(parent), review_(review) {
  setObjectName(QStringLiteral("review"));
  setWindowTitle(QStringLiteral("Review Changes"));
  auto* note = new QLabel(
      QStringLiteral("This is what will be written. Clear an object's box to leave it out."), this);
  note->setWordWrap(true);
  MakeTable();
  ldif_ = new QPlainTextEdit(this);
  ldif_->setObjectName(QStringLiteral("review_ldif"));
  ldif_->setAccessibleName(QStringLiteral("Changes as LDIF"));
  ldif_->setReadOnly(true);
  ldif_->setUndoRedoEnabled(false);
  ldif_->setTabChangesFocus(true);
  ldif_->setLineWrapMode(QPlainTextEdit::NoWrap);
  ldif_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  tabs_ = new QTabWidget(this);
  tabs_->addTab(table_, QStringLiteral("&Changes"));
  tabs_->addTab(ldif_, QStringLiteral("&LDIF"));
  connect(tabs_, &QTabWidget::currentChanged, this, &ReviewDialog::ShowLdif);
  ldif_turns_.setSingleShot(true);
  connect(&ldif_turns_, &QTimer::timeout, this, &ReviewDialog::AddLdif);
  auto* buttons = new QDialogButtonBox(this);
  write_ = buttons->addButton(QStringLiteral("&Write"), QDialogButtonBox::AcceptRole);
  write_->setObjectName(QStringLiteral("review_write"));
  write_->setDefault(true);
  buttons->addButton(QStringLiteral("Go &Back"), QDialogButtonBox::RejectRole);
  connect(buttons, &QDialogButtonBox::accepted, this, &ReviewDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &ReviewDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(note);
  layout->addWidget(tabs_, 1);
  layout->addWidget(buttons);
  setTabOrder(tabs_, table_);
  setTabOrder(table_, ldif_);
  setTabOrder(ldif_, write_);
  ResizeToFit(*this, kWantedSize);
  ShowCount();
  table_->setFocus();
}

ReviewDialog::~ReviewDialog() = default;

void ReviewDialog::MakeTable() {
  model_ = new ReviewModel(review_, this);
  model_->on_changed = [this] { ShowCount(); };
  table_ = new QTableView(this);
  table_->setObjectName(QStringLiteral("review_table"));
  table_->setAccessibleName(QStringLiteral("Changes"));
  SetUpTable(*table_, *model_);
}

void ReviewDialog::ShowCount() {
  const std::size_t count = model_->WantedCount();
  write_->setText(count == 1 ? QStringLiteral("&Write 1 Object")
                             : QStringLiteral("&Write %1 Objects").arg(count));
  write_->setEnabled(count > 0);
}

void ReviewDialog::ShowLdif() {
  next_in_ldif_ = 0;
  ldif_->clear();
  if (tabs_->currentIndex() == kLdifTab) return AddLdif();
  ldif_turns_.stop();
}

void ReviewDialog::AddLdif() {
  std::string text;
  const std::size_t all = review_.changes.size();
  for (std::size_t added = 0; added < kLdifAtOnce && next_in_ldif_ < all; ++next_in_ldif_) {
    if (!review_.changes[next_in_ldif_].is_wanted) continue;
    text += review_.ldif_of(next_in_ldif_);
    ++added;
  }
  QTextCursor end(ldif_->document());
  end.movePosition(QTextCursor::End);
  // Whatever is no plain text stands in base 64 there.
  end.insertText(ToQString(text));
  if (next_in_ldif_ < all) {
    ldif_turns_.start();
  } else {
    ldif_turns_.stop();
  }
}

}  // namespace pelora::console
