// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/attributes/attributes_window.h"

#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTableWidget>
#include <QVBoxLayout>
#include <utility>

#include "directory/ascii_case.h"
#include "hosts/console/dialogs/name_label.h"
#include "hosts/console/dialogs/on_screen.h"
#include "hosts/console/dialogs/qt_dialog.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/writing/tables.h"

namespace pelora::console {
namespace {

constexpr QSize kWantedSize(680, 520);
constexpr int kNameCharacters = 40;

}  // namespace

AttributesWindow::AttributesWindow(const QString& name, Reader read, QWidget* parent,
                                   AttributeEditor editor)
    : QDialog(parent), read_(std::move(read)), editor_(std::move(editor)) {
  setObjectName(QStringLiteral("attributes"));
  SetPlainTitle(*this, QStringLiteral("%1 Attributes").arg(name));
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
  note_ = new NameLabel(this);
  note_->setObjectName(QStringLiteral("attributes_note"));
  ShowPlainly(*note_);
  note_->setWordWrap(true);
  auto* buttons = new QDialogButtonBox(this);
  if (editor_.write) MakeEditButtons(*buttons);
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
  layout->addWidget(note_);
  layout->addWidget(buttons);
  ResizeToFit(*this, kWantedSize);
  Fill();
  filter_->setFocus();
}

void AttributesWindow::MakeEditButtons(QDialogButtonBox& buttons) {
  edit_ = buttons.addButton(QStringLiteral("&Edit..."), QDialogButtonBox::ActionRole);
  edit_->setObjectName(QStringLiteral("attributes_edit"));
  QPushButton* another =
      buttons.addButton(QStringLiteral("&Set Another..."), QDialogButtonBox::ActionRole);
  another->setObjectName(QStringLiteral("attributes_set"));
  for (QPushButton* button : {edit_, another}) button->setAutoDefault(false);
  connect(edit_, &QPushButton::clicked, this, [this] { Edit(); });
  connect(another, &QPushButton::clicked, this, [this] { SetAnother(); });
  connect(table_, &QTableWidget::cellDoubleClicked, this, [this] { Edit(); });
  connect(table_, &QTableWidget::currentCellChanged, this, [this] { ShowNote(); });
}

std::string AttributesWindow::CurrentAttribute() const {
  const int row = table_->currentRow();
  return row < 0 ? std::string() : rows_[static_cast<std::size_t>(row)].attribute;
}

void AttributesWindow::ShowNote() {
  if (edit_ == nullptr) return;
  const std::string attribute = CurrentAttribute();
  const std::string why = attribute.empty() ? std::string() : editor_.why_read_only(attribute);
  note_->setText(why.empty() ? QString() : ToQString(attribute + " cannot be edited here. " + why));
  edit_->setEnabled(!attribute.empty() && why.empty());
}

void AttributesWindow::Edit() {
  if (edit_ != nullptr && edit_->isEnabled()) EditOne(CurrentAttribute());
}

void AttributesWindow::SetAnother() {
  QStringList names;
  for (const std::string& name : editor_.settable()) names.push_back(ToQString(name));
  QInputDialog dialog(this);
  dialog.setObjectName(QStringLiteral("attribute_choice"));
  dialog.setWindowTitle(QStringLiteral("Set Another Attribute"));
  dialog.setLabelText(QStringLiteral("&Attribute that is not set:"));
  dialog.setComboBoxItems(names);
  // However long a name is, it widens no window.
  for (QComboBox* const list : dialog.findChildren<QComboBox*>()) {
    list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    list->setMinimumContentsLength(kNameCharacters);
  }
  if (!names.isEmpty() && RunModal(dialog) == QDialog::Accepted) {
    EditOne(ToUtf8(dialog.textValue()));
  }
}

void AttributesWindow::EditOne(const std::string& attribute) {
  AttributeDialog dialog(editor_.edited(attribute), editor_, this);
  if (RunModal(dialog) != QDialog::Accepted) return;
  Fill();
  for (std::size_t row = 0; row < rows_.size(); ++row) {
    if (!EqualsWithoutCase(rows_[row].attribute, attribute)) continue;
    table_->setCurrentCell(static_cast<int>(row), 0);
    return;
  }
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
  ShowNote();
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
