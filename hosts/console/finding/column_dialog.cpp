// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/finding/column_dialog.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <algorithm>

#include "hosts/console/dialogs/on_screen.h"
#include "hosts/console/text/qt_text.h"

namespace pelora::console {
namespace {

constexpr QSize kWantedSize(420, 480);

}  // namespace

ColumnDialog::ColumnDialog(const std::vector<session::ListColumn>& all,
                           const std::vector<std::string>& chosen, QWidget* parent)
    : QDialog(parent), filter_(new QLineEdit(this)), list_(new QListWidget(this)) {
  setWindowTitle(QStringLiteral("Columns"));
  filter_->setClearButtonEnabled(true);
  filter_->setObjectName(QStringLiteral("column_filter"));
  list_->setObjectName(QStringLiteral("columns"));
  list_->setAccessibleName(QStringLiteral("Columns"));
  const auto add = [this](const session::ListColumn& column, bool is_chosen) {
    QString text = ToQString(column.title);
    if (!column.place.empty()) text += QStringLiteral(" (%1)").arg(ToQString(column.place));
    auto* item = new QListWidgetItem(text, list_);
    item->setData(Qt::UserRole, ToQString(column.name));
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    item->setCheckState(is_chosen ? Qt::Checked : Qt::Unchecked);
  };
  const auto is_chosen = [&chosen](const session::ListColumn& column) {
    return std::ranges::find(chosen, column.name) != chosen.end();
  };
  for (const std::string& name : chosen) {
    const auto column = std::ranges::find(all, name, &session::ListColumn::name);
    // The name is always there.
    if (column != all.end() && name != "name") add(*column, true);
  }
  for (const session::ListColumn& column : all) {
    if (!is_chosen(column) && column.name != "name") add(column, false);
  }
  list_->setCurrentRow(0);

  auto* label = new QLabel(QStringLiteral("&Show only:"), this);
  label->setBuddy(filter_);
  auto* up = new QPushButton(QStringLiteral("Move &Up"), this);
  auto* down = new QPushButton(QStringLiteral("Move &Down"), this);
  for (QPushButton* button : {up, down}) button->setAutoDefault(false);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  auto* line = new QHBoxLayout;
  line->addWidget(label);
  line->addWidget(filter_);
  auto* moves = new QHBoxLayout;
  moves->addWidget(up);
  moves->addWidget(down);
  moves->addStretch();
  auto* layout = new QVBoxLayout(this);
  auto* heading = new QLabel(QStringLiteral("&Columns:"), this);
  heading->setBuddy(list_);
  layout->addLayout(line);
  layout->addWidget(heading);
  layout->addWidget(list_);
  layout->addLayout(moves);
  layout->addWidget(buttons);
  ResizeToFit(*this, kWantedSize);
  connect(filter_, &QLineEdit::textChanged, this, [this](const QString& text) {
    for (int row = 0; row < list_->count(); ++row) {
      list_->item(row)->setHidden(!list_->item(row)->text().contains(text, Qt::CaseInsensitive));
    }
  });
  connect(up, &QPushButton::clicked, this, [this] { Move(-1); });
  connect(down, &QPushButton::clicked, this, [this] { Move(1); });
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void ColumnDialog::Move(int rows) {
  const int from = list_->currentRow();
  const int to = from + rows;
  if (from < 0 || to < 0 || to >= list_->count()) return;
  list_->insertItem(to, list_->takeItem(from));
  list_->setCurrentRow(to);
}

std::vector<std::string> ColumnDialog::Chosen() const {
  std::vector<std::string> chosen;
  for (int row = 0; row < list_->count(); ++row) {
    const QListWidgetItem& item = *list_->item(row);
    if (item.checkState() == Qt::Checked) {
      chosen.push_back(ToUtf8(item.data(Qt::UserRole).toString()));
    }
  }
  return chosen;
}

}  // namespace pelora::console
