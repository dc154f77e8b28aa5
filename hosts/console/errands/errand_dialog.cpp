// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/errands/errand_dialog.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "hosts/console/dialogs/name_label.h"
#include "hosts/console/text/plain_text.h"

namespace pelora::console {
namespace {

constexpr int kWidth = 360;
/// Before so much is done a guess is worth nothing.
constexpr qint64 kLeastMilliseconds = 1000;
constexpr qint64 kSecond = 1000;
constexpr qint64 kMinute = 60;

}  // namespace

QString TimeLeft(std::size_t done, std::size_t total, qint64 milliseconds) {
  if (done == 0 || done >= total || milliseconds < kLeastMilliseconds) return {};
  const double each = static_cast<double>(milliseconds) / static_cast<double>(done);
  const auto seconds = static_cast<qint64>(each * static_cast<double>(total - done)) / kSecond + 1;
  if (seconds == 1) return QStringLiteral("about a second left");
  if (seconds < 2 * kMinute) return QStringLiteral("about %1 seconds left").arg(seconds);
  return QStringLiteral("about %1 minutes left").arg((seconds + kMinute / 2) / kMinute);
}

ErrandDialog::ErrandDialog(const QString& what, QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("errand"));
  setWindowTitle(QStringLiteral("Please Wait"));
  setWindowModality(Qt::ApplicationModal);
  what_ = new NameLabel(this);
  what_->setText(what);
  what_->setObjectName(QStringLiteral("errand_what"));
  what_->setWordWrap(true);
  bar_ = new QProgressBar(this);
  bar_->setAccessibleName(what);
  left_ = new QLabel(this);
  left_->setObjectName(QStringLiteral("errand_left"));
  ShowPlainly(*left_);
  stop_ = new QPushButton(QStringLiteral("&Stop"), this);
  stop_->setObjectName(QStringLiteral("errand_stop"));
  connect(stop_, &QPushButton::clicked, this, &ErrandDialog::reject);
  auto* row = new QHBoxLayout;
  row->addWidget(left_, 1);
  row->addWidget(stop_);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(what_);
  layout->addWidget(bar_);
  layout->addLayout(row);
  setMinimumWidth(kWidth);
  since_.start();
  ShowProgress(0, 0);
}

void ErrandDialog::ShowProgress(std::size_t done, std::size_t total, qint64 milliseconds) {
  // A bar without a range moves by itself.
  bar_->setRange(0, static_cast<int>(total));
  bar_->setValue(static_cast<int>(done));
  if (!stop_->isEnabled()) return;
  const QString count = total == 0 ? QString() : QStringLiteral("%1 of %2").arg(done).arg(total);
  const QString left = TimeLeft(done, total, milliseconds);
  left_->setText(left.isEmpty() ? count : count + QStringLiteral(", ") + left);
}

void ErrandDialog::reject() {
  if (!stop_->isEnabled()) return;
  stop_->setEnabled(false);
  left_->setText(QStringLiteral("Stopping..."));
  if (on_stop) on_stop();
}

}  // namespace pelora::console
