// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/commands/plan_model.h"

#include <array>
#include <utility>

#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"

namespace pelora::console {
namespace {

constexpr std::array kHeadings = {"Object", "Before", "After", "Remark"};

}  // namespace

PlanModel::PlanModel(std::span<const session::DirectoryObject> selection, QObject* parent)
    : TableRows(kHeadings, parent), selection_(selection) {}

void PlanModel::Show(std::vector<session::PlannedObject> planned, bool with_odd) {
  beginResetModel();
  planned_ = std::move(planned);
  with_odd_ = with_odd;
  endResetModel();
}

void PlanModel::SetWithOdd(bool with_odd) {
  with_odd_ = with_odd;
  TellAllChanged();
}

std::size_t PlanModel::CountRows() const { return planned_.size(); }

QString PlanModel::TextOf(const session::PlannedObject& object, int column) const {
  const session::PlannedValues& values = object.values;
  const bool is_written = object.IsWritten(with_odd_);
  const bool is_stopped =
      values.judgement.verdict == session::Verdict::kWrong || (values.IsChange() && !is_written);
  switch (column) {
    case kObject:
      return ToQString(selection_[object.at].name);
    case kBefore:
      return ToQString(values.before);
    case kAfter:
      return is_written ? ToQString(values.after) : QString();
    default:
      break;
  }
  const QString said = ToQString(values.judgement.sentence);
  return is_stopped ? QStringLiteral("Left out: %1").arg(said) : said;
}

QVariant PlanModel::DataOf(const QModelIndex& index, int role) const {
  const session::PlannedObject& object = planned_[static_cast<std::size_t>(index.row())];
  const QString text = Readable(TextOf(object, index.column()));
  if (role == Qt::ToolTipRole) {
    return PlainToolTip(index.column() == kObject ? ToQString(selection_[object.at].dn) : text);
  }
  return IsShownText(role) ? QVariant(text.simplified()) : QVariant();
}

}  // namespace pelora::console
