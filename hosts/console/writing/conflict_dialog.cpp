// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/writing/conflict_dialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>

#include "hosts/console/dialogs/on_screen.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/writing/tables.h"

namespace pelora::console {
namespace {

constexpr QSize kWantedSize(860, 320);

}  // namespace

ConflictDialog::ConflictDialog(std::vector<session::ShownConflict>& conflicts, QWidget* parent)
    : QDialog(parent), conflicts_(conflicts), model_(new ConflictModel(conflicts, this)) {
  setObjectName(QStringLiteral("conflicts"));
  setWindowTitle(QStringLiteral("Changed Meanwhile by Someone Else"));
  auto* note = new QLabel(
      QStringLiteral("Someone else has changed these fields since they were read. Nothing of "
                     "their objects has been written yet: choose what is to stay."),
      this);
  note->setWordWrap(true);
  theirs_ = new QPushButton(QStringLiteral("Keep &Theirs Everywhere"), this);
  theirs_->setObjectName(QStringLiteral("conflicts_theirs"));
  auto* mine = new QPushButton(QStringLiteral("Write &Mine Everywhere"), this);
  mine->setObjectName(QStringLiteral("conflicts_mine"));
  connect(theirs_, &QPushButton::clicked, this, [this] { ChooseForAll(Choice::kTheirs); });
  connect(mine, &QPushButton::clicked, this, [this] { ChooseForAll(Choice::kMine); });
  for (QPushButton* button : {theirs_, mine}) button->setAutoDefault(false);
  MakeTable();
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &ConflictDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &ConflictDialog::reject);
  auto* row = new QHBoxLayout;
  row->addWidget(theirs_);
  row->addWidget(mine);
  row->addStretch();
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(note);
  layout->addWidget(table_, 1);
  layout->addLayout(row);
  layout->addWidget(buttons);
  ResizeToFit(*this, kWantedSize);
  table_->setFocus();
}

void ConflictDialog::MakeTable() {
  table_ = new QTableView(this);
  table_->setObjectName(QStringLiteral("conflicts_table"));
  table_->setAccessibleName(QStringLiteral("Conflicts"));
  SetUpTable(*table_, *model_);
  // As much room as the list takes that is put into one row.
  QComboBox widest;
  widest.addItem(ConflictModel::TextOf(Choice::kTheirs));
  table_->verticalHeader()->setDefaultSectionSize(
      std::max(table_->verticalHeader()->defaultSectionSize(), widest.sizeHint().height()));
  QHeaderView& header = *table_->horizontalHeader();
  header.setSectionResizeMode(ConflictModel::kChoice, QHeaderView::Fixed);
  header.resizeSection(ConflictModel::kChoice,
                       std::max(header.minimumSectionSize(), widest.sizeHint().width()));
  connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this](const QModelIndex& now, const QModelIndex& before) {
            OfferChoiceIn(now.row(), before.row());
          });
  OfferChoiceIn(0, -1);
}

void ConflictDialog::OfferChoiceIn(int row, int before) {
  const auto place = [this](int at) { return model_->index(at, ConflictModel::kChoice); };
  if (before >= 0) table_->setIndexWidget(place(before), nullptr);
  if (row < 0) return;
  const session::ShownConflict& conflict = conflicts_.at(static_cast<std::size_t>(row));
  auto* choice = new QComboBox(table_);
  choice->setObjectName(QStringLiteral("conflicts_choice"));
  choice->setAccessibleName(
      QStringLiteral("What stays of %1 of %2")
          .arg(Readable(ToQString(conflict.field)), Readable(ToQString(conflict.name))));
  for (const Choice possible : model_->ChoicesOf(row)) {
    choice->addItem(ConflictModel::TextOf(possible), static_cast<int>(possible));
  }
  choice->setCurrentIndex(choice->findData(static_cast<int>(model_->ChoiceOf(row))));
  connect(choice, &QComboBox::currentIndexChanged, this, [this, row, choice] {
    model_->Choose(row, static_cast<Choice>(choice->currentData().toInt()));
  });
  table_->setIndexWidget(place(row), choice);
  setTabOrder(table_, choice);
  setTabOrder(choice, theirs_);
}

void ConflictDialog::ChooseForAll(Choice choice) {
  model_->ChooseForAll(choice);
  OfferChoiceIn(table_->currentIndex().row(), table_->currentIndex().row());
}

void ConflictDialog::accept() {
  for (std::size_t at = 0; at < conflicts_.size(); ++at) {
    conflicts_[at].choice = model_->ChoiceOf(static_cast<int>(at));
  }
  QDialog::accept();
}

}  // namespace pelora::console
