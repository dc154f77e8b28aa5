// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/writing/conflict_dialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "hosts/console/dialogs/on_screen.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/writing/tables.h"

namespace pelora::console {
namespace {

constexpr QSize kWantedSize(860, 320);
constexpr int kChoiceColumn = 5;

}  // namespace

ConflictDialog::ConflictDialog(std::vector<session::ShownConflict>& conflicts, QWidget* parent)
    : QDialog(parent), conflicts_(conflicts) {
  setObjectName(QStringLiteral("conflicts"));
  setWindowTitle(QStringLiteral("Changed Meanwhile by Someone Else"));
  auto* note = new QLabel(
      QStringLiteral("Someone else has changed these fields since they were read. Nothing of "
                     "their objects has been written yet: choose what is to stay."),
      this);
  note->setWordWrap(true);
  MakeTable();
  auto* theirs = new QPushButton(QStringLiteral("Keep &Theirs Everywhere"), this);
  theirs->setObjectName(QStringLiteral("conflicts_theirs"));
  auto* mine = new QPushButton(QStringLiteral("Write &Mine Everywhere"), this);
  mine->setObjectName(QStringLiteral("conflicts_mine"));
  connect(theirs, &QPushButton::clicked, this, [this] { ChooseForAll(Choice::kTheirs); });
  connect(mine, &QPushButton::clicked, this, [this] { ChooseForAll(Choice::kMine); });
  for (QPushButton* button : {theirs, mine}) button->setAutoDefault(false);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &ConflictDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &ConflictDialog::reject);
  auto* row = new QHBoxLayout;
  row->addWidget(theirs);
  row->addWidget(mine);
  row->addStretch();
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(note);
  layout->addWidget(table_, 1);
  layout->addLayout(row);
  layout->addWidget(buttons);
  ResizeToFit(*this, kWantedSize);
  choices_.front()->setFocus();
}

void ConflictDialog::MakeTable() {
  const QStringList headings = {QStringLiteral("Object"),      QStringLiteral("Field"),
                                QStringLiteral("You saw"),     QStringLiteral("There is now"),
                                QStringLiteral("You entered"), QStringLiteral("What stays")};
  table_ = new QTableWidget(static_cast<int>(conflicts_.size()), kChoiceColumn + 1, this);
  table_->setObjectName(QStringLiteral("conflicts_table"));
  table_->setAccessibleName(QStringLiteral("Conflicts"));
  table_->setHorizontalHeaderLabels(headings);
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setTabKeyNavigation(false);
  table_->setFocusPolicy(Qt::ClickFocus);
  table_->setWordWrap(false);
  table_->verticalHeader()->hide();
  ShareColumns(*table_);
  table_->horizontalHeader()->setSectionResizeMode(kChoiceColumn, QHeaderView::ResizeToContents);
  int row = 0;
  for (const session::ShownConflict& conflict : conflicts_) AddRow(row++, conflict);
  table_->resizeRowsToContents();
}

void ConflictDialog::AddRow(int row, const session::ShownConflict& conflict) {
  int column = 0;
  for (const std::string* text :
       {&conflict.name, &conflict.field, &conflict.seen, &conflict.there, &conflict.wanted}) {
    const QString shown = Readable(ToQString(*text));
    auto* item = new QTableWidgetItem(shown.simplified());
    item->setToolTip(PlainToolTip(column == 0 ? ToQString(conflict.dn) : shown));
    table_->setItem(row, column++, item);
  }
  auto* choice = new QComboBox(table_);
  choice->setAccessibleName(
      QStringLiteral("What stays of %1 of %2")
          .arg(Readable(ToQString(conflict.field)), Readable(ToQString(conflict.name))));
  const auto add = [choice](const QString& text, Choice meaning) {
    choice->addItem(text, static_cast<int>(meaning));
  };
  add(QStringLiteral("Keep theirs"), Choice::kTheirs);
  add(QStringLiteral("Write mine"), Choice::kMine);
  if (conflict.is_list) add(QStringLiteral("Both"), Choice::kBoth);
  table_->setCellWidget(row, kChoiceColumn, choice);
  choices_.push_back(choice);
}

void ConflictDialog::ChooseForAll(Choice choice) {
  for (QComboBox* box : choices_) {
    box->setCurrentIndex(std::max(0, box->findData(static_cast<int>(choice))));
  }
}

void ConflictDialog::accept() {
  for (std::size_t at = 0; at < conflicts_.size(); ++at) {
    conflicts_[at].choice = static_cast<Choice>(choices_[at]->currentData().toInt());
  }
  QDialog::accept();
}

}  // namespace pelora::console
