// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/writing/result_dialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSaveFile>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>

#include "hosts/changes/change_runner.h"
#include "hosts/console/dialogs/on_screen.h"
#include "hosts/console/dialogs/qt_dialog.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/writing/result_model.h"
#include "hosts/console/writing/tables.h"
#include "hosts/session/result_json.h"

namespace pelora::console {
namespace {

constexpr QSize kWantedSize(720, 420);
constexpr int kReasonLines = 4;

/// "3 written, 1 failed": what there is of each.
QString Summary(std::span<const session::WrittenChange> results) {
  changes::Tally tally;
  for (const session::WrittenChange& row : results) tally.Count(row.result.outcome);
  QStringList parts;
  for (std::size_t at = 0; at < changes::kOutcomeCount; ++at) {
    const auto outcome = static_cast<changes::Outcome>(at);
    if (tally[outcome] == 0) continue;
    parts.append(QStringLiteral("%1 %2").arg(tally[outcome]).arg(WordFor(outcome)));
  }
  const QString sums = parts.join(QStringLiteral(", "));
  return tally.IsAllDone() ? QStringLiteral("Everything was done: %1.").arg(sums)
                           : QStringLiteral("Not everything was done: %1.").arg(sums);
}

}  // namespace

int ResultDialog::WidestWord() const {
  const QFontMetrics metrics = table_->fontMetrics();
  int widest = 0;
  for (std::size_t at = 0; at < changes::kOutcomeCount; ++at) {
    const QString word = WordFor(static_cast<changes::Outcome>(at));
    widest = std::max(widest, metrics.horizontalAdvance(word));
  }
  return widest + 4 * metrics.averageCharWidth();
}

ResultDialog::ResultDialog(std::span<const session::WrittenChange> results, QWidget* parent)
    : QDialog(parent), results_(results) {
  setObjectName(QStringLiteral("results"));
  setWindowTitle(QStringLiteral("What Was Written"));
  const bool is_any_left = std::ranges::any_of(
      results, [](const session::WrittenChange& row) { return !row.result.IsDone(); });
  auto* summary = new QLabel(Summary(results), this);
  summary->setObjectName(QStringLiteral("results_summary"));
  ShowPlainly(*summary);
  MakeTable();
  auto* only_left = new QCheckBox(QStringLiteral("Only what is &not done"), this);
  only_left->setObjectName(QStringLiteral("results_only_left"));
  connect(only_left, &QCheckBox::toggled, this, [this](bool checked) {
    model_->ShowOnlyLeft(checked);
    if (model_->rowCount() > 0) table_->setCurrentIndex(model_->index(0, 0));
    ShowReason();
  });
  only_left->setChecked(is_any_left);
  only_left->setEnabled(is_any_left);
  auto* buttons = new QDialogButtonBox(this);
  QPushButton* retry =
      buttons->addButton(QStringLiteral("&Retry What Is Left"), QDialogButtonBox::AcceptRole);
  retry->setObjectName(QStringLiteral("results_retry"));
  retry->setEnabled(is_any_left);
  QPushButton* save =
      buttons->addButton(QStringLiteral("&Save Report..."), QDialogButtonBox::ActionRole);
  save->setObjectName(QStringLiteral("results_save"));
  save->setAutoDefault(false);
  QPushButton* close = buttons->addButton(QDialogButtonBox::Close);
  close->setText(QStringLiteral("&Close"));
  close->setDefault(true);
  connect(buttons, &QDialogButtonBox::accepted, this, &ResultDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &ResultDialog::reject);
  connect(save, &QPushButton::clicked, this, &ResultDialog::SaveReport);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(summary);
  layout->addWidget(table_, 1);
  layout->addWidget(reason_);
  layout->addWidget(only_left);
  layout->addWidget(buttons);
  ResizeToFit(*this, kWantedSize);
  ShowReason();
  table_->setFocus();
}

void ResultDialog::MakeTable() {
  model_ = new ResultModel(results_, this);
  table_ = new QTableView(this);
  table_->setObjectName(QStringLiteral("results_table"));
  table_->setAccessibleName(QStringLiteral("Results"));
  SetUpTable(*table_, *model_);
  QHeaderView& header = *table_->horizontalHeader();
  // By the words that there are, not by the rows: of those there may be thousands.
  header.setSectionResizeMode(ResultModel::kResult, QHeaderView::Fixed);
  header.resizeSection(ResultModel::kResult, std::max(header.minimumSectionSize(), WidestWord()));
  reason_ = new QPlainTextEdit(this);
  reason_->setObjectName(QStringLiteral("results_reason"));
  reason_->setAccessibleName(QStringLiteral("Reason"));
  reason_->setReadOnly(true);
  reason_->setTabChangesFocus(true);
  reason_->setFixedHeight(reason_->fontMetrics().lineSpacing() * kReasonLines + 12);
  connect(table_->selectionModel(), &QItemSelectionModel::currentChanged, this,
          &ResultDialog::ShowReason);
}

void ResultDialog::ShowReason() {
  const QModelIndex current = table_->currentIndex();
  reason_->setPlainText(
      current.isValid()
          ? current.siblingAtColumn(ResultModel::kReason).data(ResultModel::kWholeRole).toString()
          : QString());
}

QString ResultDialog::WriteReport(const QString& path) const {
  QSaveFile file(path);
  if (file.open(QIODevice::WriteOnly)) {
    for (const session::WrittenChange& row : results_) {
      file.write(QByteArray::fromStdString(session::ResultJson(row.result) + "\n"));
    }
    if (file.commit()) return {};
  }
  return QStringLiteral("The report cannot be written: %1.").arg(file.errorString());
}

void ResultDialog::SaveReport() {
  const QString path = QFileDialog::getSaveFileName(
      this, QStringLiteral("Save Report"), QStringLiteral("report.json"),
      QStringLiteral("Reports (*.json);;All files (*)"));
  if (path.isEmpty()) return;
  const QString error = WriteReport(path);
  if (error.isEmpty()) return;
  QMessageBox box(QMessageBox::Critical, windowTitle(), {}, QMessageBox::Ok, this);
  SetPlainTexts(box, error);
  RunModal(box);
}

}  // namespace pelora::console
