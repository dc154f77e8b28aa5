// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/finding/column_dialog.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <algorithm>

#include "hosts/console/dialogs/on_screen.h"
#include "hosts/console/text/qt_text.h"

namespace pelora::console {
namespace {

constexpr QSize kWantedSize(420, 480);
/// In average characters, as those of a list.
constexpr int kNarrowest = 3;
constexpr int kWidest = 200;
constexpr int kUsualWidth = 24;
constexpr int kNameOfColumn = Qt::UserRole;
constexpr int kWidthOfColumn = Qt::UserRole + 1;
constexpr std::string_view kAlwaysThere = "name";

}  // namespace

ColumnDialog::ColumnDialog(const std::vector<session::ListColumn>& all,
                           const std::vector<LyingColumn>& lying, QWidget* parent)
    : QDialog(parent),
      filter_(new QLineEdit(this)),
      list_(new QListWidget(this)),
      width_(new QSpinBox(this)) {
  setObjectName(QStringLiteral("column_dialog"));
  setWindowTitle(QStringLiteral("Columns"));
  filter_->setClearButtonEnabled(true);
  filter_->setObjectName(QStringLiteral("column_filter"));
  list_->setObjectName(QStringLiteral("columns"));
  list_->setAccessibleName(QStringLiteral("Columns"));
  width_->setObjectName(QStringLiteral("column_width"));
  width_->setAccessibleName(QStringLiteral("Width"));
  width_->setRange(kNarrowest, kWidest);
  width_->setSuffix(QStringLiteral(" characters"));
  for (const LyingColumn& shown : lying) {
    const auto column = std::ranges::find(all, shown.name, &session::ListColumn::name);
    if (column != all.end()) Add(*column, true, shown.width);
  }
  for (const session::ListColumn& column : all) {
    const bool is_shown = std::ranges::find(lying, column.name, &LyingColumn::name) != lying.end();
    if (!is_shown) Add(column, column.name == kAlwaysThere, kUsualWidth);
  }
  MakeLayout();
  connect(filter_, &QLineEdit::textChanged, this, [this](const QString& text) {
    for (int row = 0; row < list_->count(); ++row) {
      list_->item(row)->setHidden(!list_->item(row)->text().contains(text, Qt::CaseInsensitive));
    }
  });
  connect(list_, &QListWidget::currentRowChanged, this, &ColumnDialog::ShowWidth);
  connect(width_, &QSpinBox::valueChanged, this, [this](int width) {
    if (QListWidgetItem* const item = list_->currentItem()) item->setData(kWidthOfColumn, width);
  });
  list_->setCurrentRow(0);
}

void ColumnDialog::Add(const session::ListColumn& column, bool is_chosen, int width) {
  QString text = ToQString(column.title);
  if (!column.place.empty()) text += QStringLiteral(" (%1)").arg(ToQString(column.place));
  auto* const item = new QListWidgetItem(text);
  item->setData(kNameOfColumn, ToQString(column.name));
  item->setData(kWidthOfColumn, width);
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  const bool is_fixed = column.name == kAlwaysThere;
  if (!is_fixed) flags |= Qt::ItemIsUserCheckable;
  item->setFlags(flags);
  item->setCheckState(is_chosen ? Qt::Checked : Qt::Unchecked);
  list_->insertItem(is_fixed ? 0 : list_->count(), item);
}

void ColumnDialog::MakeLayout() {
  auto* label = new QLabel(QStringLiteral("&Show only:"), this);
  label->setBuddy(filter_);
  auto* up = new QPushButton(QStringLiteral("Move &Up"), this);
  auto* down = new QPushButton(QStringLiteral("Move &Down"), this);
  for (QPushButton* button : {up, down}) button->setAutoDefault(false);
  auto* wide = new QLabel(QStringLiteral("&Width:"), this);
  wide->setBuddy(width_);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  auto* line = new QHBoxLayout;
  line->addWidget(label);
  line->addWidget(filter_);
  auto* moves = new QHBoxLayout;
  moves->addWidget(up);
  moves->addWidget(down);
  moves->addStretch();
  moves->addWidget(wide);
  moves->addWidget(width_);
  auto* heading = new QLabel(QStringLiteral("&Columns:"), this);
  heading->setBuddy(list_);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(line);
  layout->addWidget(heading);
  layout->addWidget(list_);
  layout->addLayout(moves);
  layout->addWidget(buttons);
  ResizeToFit(*this, kWantedSize);
  connect(up, &QPushButton::clicked, this, [this] { Move(-1); });
  connect(down, &QPushButton::clicked, this, [this] { Move(1); });
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void ColumnDialog::ShowWidth() {
  const QListWidgetItem* const item = list_->currentItem();
  const QSignalBlocker nobody_edits(width_);
  if (item != nullptr) width_->setValue(item->data(kWidthOfColumn).toInt());
}

bool ColumnDialog::IsFixed(int row) const {
  return ToUtf8(list_->item(row)->data(kNameOfColumn).toString()) == kAlwaysThere;
}

void ColumnDialog::Move(int rows) {
  const int from = list_->currentRow();
  const int to = from + rows;
  if (from < 0 || to < 0 || to >= list_->count() || IsFixed(from) || IsFixed(to)) return;
  list_->insertItem(to, list_->takeItem(from));
  list_->setCurrentRow(to);
}

std::vector<std::string> ColumnDialog::Chosen() const {
  std::vector<std::string> chosen;
  for (int row = 0; row < list_->count(); ++row) {
    const QListWidgetItem& item = *list_->item(row);
    if (!IsFixed(row) && item.checkState() == Qt::Checked) {
      chosen.push_back(ToUtf8(item.data(kNameOfColumn).toString()));
    }
  }
  return chosen;
}

std::vector<LyingColumn> ColumnDialog::Widths() const {
  std::vector<LyingColumn> widths;
  for (int row = 0; row < list_->count(); ++row) {
    const QListWidgetItem& item = *list_->item(row);
    if (item.checkState() != Qt::Checked) continue;
    widths.push_back({.name = ToUtf8(item.data(kNameOfColumn).toString()),
                      .width = item.data(kWidthOfColumn).toInt()});
  }
  return widths;
}

}  // namespace pelora::console
