// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/writing/history_dialog.h"

#include <QDateTime>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <utility>

#include "hosts/console/dialogs/on_screen.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/writing/tables.h"

namespace pelora::console {
namespace {

constexpr QSize kWantedSize(720, 400);
constexpr std::size_t kNamed = 3;
/// With the mouse on it.
constexpr std::size_t kListed = 20;

QString TimeText(session::ChangeHistory::Clock::time_point when) {
  const auto time = QDateTime::fromSecsSinceEpoch(session::ChangeHistory::Clock::to_time_t(when));
  return QLocale().toString(time, QLocale::ShortFormat);
}

/// One a line, as many as can be looked at.
QString Lines(const std::vector<std::string>& texts) {
  QStringList lines;
  for (std::size_t at = 0; at < texts.size() && at < kListed; ++at) {
    lines.append(ToQString(texts[at]));
  }
  if (texts.size() > kListed) {
    lines.append(QStringLiteral("and %1 more").arg(texts.size() - kListed));
  }
  return lines.join(QLatin1Char('\n'));
}

}  // namespace

QString Enumerated(const std::vector<std::string>& texts) {
  QStringList named;
  for (std::size_t at = 0; at < texts.size() && at < kNamed; ++at) {
    named.append(Readable(ToQString(texts[at])).simplified());
  }
  // Several of them are cut once more.
  const QString text = Readable(named.join(QStringLiteral(", ")));
  if (texts.size() <= kNamed) return text;
  return QStringLiteral("%1 and %2 more").arg(text).arg(texts.size() - kNamed);
}

HistoryDialog::HistoryDialog(Lister list, QWidget* parent)
    : QDialog(parent), list_(std::move(list)) {
  setObjectName(QStringLiteral("history"));
  setWindowTitle(QStringLiteral("Changes"));
  auto* note = new QLabel(
      QStringLiteral("What was written here within the last 30 days. What somebody has changed "
                     "since is left alone when it is taken back."),
      this);
  note->setWordWrap(true);
  MakeTable();
  auto* buttons = new QDialogButtonBox(this);
  undo_ = buttons->addButton(QStringLiteral("&Undo"), QDialogButtonBox::ActionRole);
  undo_->setObjectName(QStringLiteral("history_undo"));
  redo_ = buttons->addButton(QStringLiteral("&Redo"), QDialogButtonBox::ActionRole);
  redo_->setObjectName(QStringLiteral("history_redo"));
  for (QPushButton* button : {undo_, redo_}) button->setAutoDefault(false);
  QPushButton* close = buttons->addButton(QDialogButtonBox::Close);
  close->setText(QStringLiteral("&Close"));
  close->setDefault(true);
  connect(undo_, &QPushButton::clicked, this, [this] { Do(on_undo); });
  connect(redo_, &QPushButton::clicked, this, [this] { Do(on_redo); });
  connect(buttons, &QDialogButtonBox::rejected, this, &HistoryDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(note);
  layout->addWidget(table_, 1);
  layout->addWidget(buttons);
  ResizeToFit(*this, kWantedSize);
  Fill();
  table_->setFocus();
}

void HistoryDialog::MakeTable() {
  const QStringList headings = {QStringLiteral("When"), QStringLiteral("Objects"),
                                QStringLiteral("Fields"), QStringLiteral("State")};
  table_ = new QTableWidget(0, static_cast<int>(headings.size()), this);
  table_->setObjectName(QStringLiteral("history_table"));
  table_->setAccessibleName(QStringLiteral("Changes"));
  table_->setHorizontalHeaderLabels(headings);
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setSelectionMode(QAbstractItemView::SingleSelection);
  SetUpTable(*table_, *table_->model());
  connect(table_, &QTableWidget::itemSelectionChanged, this, &HistoryDialog::UpdateButtons);
}

void HistoryDialog::Fill() {
  const int before = std::max(0, table_->currentRow());
  past_ = list_();
  table_->setRowCount(static_cast<int>(past_.size()));
  int row = 0;
  for (const session::PastChange& past : past_) {
    const QStringList texts = {TimeText(past.when), Enumerated(past.objects),
                               Enumerated(past.fields),
                               past.is_undone  ? QStringLiteral("taken back")
                               : past.is_final ? QStringLiteral("written for good")
                                               : QStringLiteral("written")};
    for (int column = 0; column < texts.size(); ++column) {
      auto* item = new QTableWidgetItem(texts[column]);
      if (column == 1) item->setToolTip(PlainToolTip(Lines(past.objects)));
      if (column == 2) item->setToolTip(PlainToolTip(Lines(past.fields)));
      table_->setItem(row, column, item);
    }
    ++row;
  }
  if (row > 0) table_->selectRow(std::min(before, row - 1));
  UpdateButtons();
}

const session::PastChange* HistoryDialog::Current() const {
  const int row = table_->currentRow();
  return row >= 0 && row < static_cast<int>(past_.size()) ? &past_[static_cast<std::size_t>(row)]
                                                          : nullptr;
}

void HistoryDialog::UpdateButtons() {
  const session::PastChange* const past = Current();
  undo_->setEnabled(past != nullptr && !past->is_undone && !past->is_final);
  redo_->setEnabled(past != nullptr && past->is_undone);
}

void HistoryDialog::Do(const std::function<void(const session::PastChange& past)>& what) {
  const session::PastChange* const past = Current();
  if (past == nullptr || !what) return;
  // The list is made anew meanwhile.
  const session::PastChange chosen = *past;
  what(chosen);
  Fill();
  table_->setFocus();
}

}  // namespace pelora::console
