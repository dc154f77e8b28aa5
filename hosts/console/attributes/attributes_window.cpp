// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/attributes/attributes_window.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTableWidget>
#include <QVBoxLayout>
#include <utility>

#include "hosts/console/dialogs/on_screen.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/writing/tables.h"

namespace pelora::console {
namespace {

constexpr QSize kWantedSize(680, 520);

}  // namespace

AttributesWindow::AttributesWindow(const QString& name, Reader read, QWidget* parent)
    : QDialog(parent), read_(std::move(read)) {
  setObjectName(QStringLiteral("attributes"));
  setWindowTitle(QStringLiteral("%1 Attributes").arg(Readable(name)));
  setAttribute(Qt::WA_DeleteOnClose);
  filter_ = new QLineEdit(this);
  filter_->setObjectName(QStringLiteral("attributes_filter"));
  filter_->setClearButtonEnabled(true);
  filter_->setPlaceholderText(QStringLiteral("Part of a name or a value"));
  connect(filter_, &QLineEdit::textChanged, this, [this] { Narrow(); });
  auto* label = new QLabel(QStringLiteral("Fi&lter:"), this);
  label->setBuddy(filter_);
  auto* line = new QHBoxLayout;
  line->addWidget(label);
  line->addWidget(filter_);
  MakeTable();
  auto* buttons = new QDialogButtonBox(this);
  QPushButton* copy = buttons->addButton(QStringLiteral("&Copy"), QDialogButtonBox::ActionRole);
  copy->setObjectName(QStringLiteral("attributes_copy"));
  QPushButton* again = buttons->addButton(QStringLiteral("&Refresh"), QDialogButtonBox::ActionRole);
  again->setObjectName(QStringLiteral("attributes_refresh"));
  for (QPushButton* button : {copy, again}) button->setAutoDefault(false);
  QPushButton* close = buttons->addButton(QDialogButtonBox::Close);
  close->setText(QStringLiteral("Cl&ose"));
  close->setDefault(true);
  connect(copy, &QPushButton::clicked, this, [this] { Copy(); });
  connect(again, &QPushButton::clicked, this, [this] { Fill(); });
  connect(buttons, &QDialogButtonBox::rejected, this, &AttributesWindow::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(line);
  auto* heading = new QLabel(QStringLiteral("&Attributes:"), this);
  heading->setBuddy(table_);
  layout->addWidget(heading);
  layout->addWidget(table_, 1);
  layout->addWidget(buttons);
  ResizeToFit(*this, kWantedSize);
  Fill();
  filter_->setFocus();
}

void AttributesWindow::MakeTable() {
  const QStringList headings = {QStringLiteral("Attribute"), QStringLiteral("Value")};
  table_ = new QTableWidget(0, static_cast<int>(headings.size()), this);
  table_->setObjectName(QStringLiteral("attributes_table"));
  table_->setAccessibleName(QStringLiteral("Attributes"));
  table_->setHorizontalHeaderLabels(headings);
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  SetUpTable(*table_, *table_->model());
  table_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  auto* copy = new QShortcut(QKeySequence::Copy, table_, nullptr, nullptr, Qt::WidgetShortcut);
  connect(copy, &QShortcut::activated, this, [this] { Copy(); });
}

void AttributesWindow::Fill() {
  rows_ = read_();
  table_->setRowCount(static_cast<int>(rows_.size()));
  int row = 0;
  for (const session::AttributeRow& shown : rows_) {
    int column = 0;
    for (const std::string* text : {&shown.attribute, &shown.value}) {
      auto* item = new QTableWidgetItem(Readable(ToQString(*text)).simplified());
      item->setToolTip(PlainToolTip(ToQString(*text)));
      table_->setItem(row, column++, item);
    }
    ++row;
  }
  Narrow();
}

void AttributesWindow::Narrow() {
  const QString wanted = filter_->text();
  for (int row = 0; row < table_->rowCount(); ++row) {
    const session::AttributeRow& shown = rows_[static_cast<std::size_t>(row)];
    const bool fits = ToQString(shown.attribute).contains(wanted, Qt::CaseInsensitive) ||
                      ToQString(shown.value).contains(wanted, Qt::CaseInsensitive);
    table_->setRowHidden(row, !fits);
  }
}

void AttributesWindow::Copy() {
  const bool takes_all = table_->selectionModel()->selectedRows().isEmpty();
  std::vector<session::AttributeRow> copied;
  for (int row = 0; row < table_->rowCount(); ++row) {
    const bool is_chosen = takes_all || table_->selectionModel()->isRowSelected(row);
    if (is_chosen && !table_->isRowHidden(row)) {
      copied.push_back(rows_[static_cast<std::size_t>(row)]);
    }
  }
  QGuiApplication::clipboard()->setText(ToQString(session::TextOf(copied)));
}

}  // namespace pelora::console
