// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/writing/result_model.h"

#include <array>

#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"

namespace pelora::console {
namespace {

constexpr std::array kHeadings = {"Result", "Object", "Reason"};
/// In the order of the outcomes.
constexpr std::array<const char*, changes::kOutcomeCount> kWords = {
    "written", "unchanged", "refused", "failed", "unknown", "not begun"};

}  // namespace

QString WordFor(changes::Outcome outcome) {
  return QString::fromLatin1(kWords.at(static_cast<std::size_t>(outcome)));
}

ResultModel::ResultModel(std::span<const session::WrittenChange> results, QObject* parent)
    : TableRows(kHeadings, parent), results_(results) {
  ShowOnlyLeft(false);
}

void ResultModel::ShowOnlyLeft(bool only_left) {
  beginResetModel();
  rows_.clear();
  for (const session::WrittenChange& row : results_) {
    if (!only_left || !row.result.IsDone()) rows_.push_back(&row);
  }
  endResetModel();
}

std::size_t ResultModel::CountRows() const { return rows_.size(); }

QVariant ResultModel::DataOf(const QModelIndex& index, int role) const {
  const session::WrittenChange& row = *rows_[static_cast<std::size_t>(index.row())];
  if (role == Qt::ToolTipRole || role == kWholeRole) {
    QString whole = ToQString(row.result.dn);
    if (!row.reason.empty()) whole += QLatin1Char('\n') + ToQString(row.reason);
    if (!row.result.message.empty() && row.result.conflicts.empty()) {
      whole += QStringLiteral("\nThe directory says: ") + ToQString(row.result.message);
    }
    return role == kWholeRole ? Readable(whole) : PlainToolTip(whole);
  }
  if (!IsShownText(role)) return {};
  if (index.column() == kResult) return WordFor(row.result.outcome);
  const std::string& text = index.column() == kObject ? row.name : row.reason;
  return Readable(ToQString(text)).simplified();
}

}  // namespace pelora::console
