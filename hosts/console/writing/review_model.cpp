// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/writing/review_model.h"

#include <algorithm>
#include <array>

#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"

namespace pelora::console {
namespace {

constexpr std::array kHeadings = {"Object", "Field", "Old", "New"};

/// A value on one line of a table.
QString OneLine(const std::string& text) { return Readable(ToQString(text)).simplified(); }

}  // namespace

ReviewModel::ReviewModel(session::Review& review, QObject* parent)
    : TableRows(kHeadings, parent), review_(review) {
  for (std::size_t change = 0; change < review.changes.size(); ++change) {
    for (std::size_t field = 0; field < review.changes[change].fields.size(); ++field) {
      rows_.push_back({.change = change, .field = field});
    }
  }
}

std::size_t ReviewModel::CountRows() const { return rows_.size(); }

QVariant ReviewModel::DataOf(const QModelIndex& index, int role) const {
  const Row& row = rows_[static_cast<std::size_t>(index.row())];
  const session::ReviewedChange& change = review_.changes[row.change];
  const session::ShownField& field = change.fields[row.field];
  if (role == Qt::CheckStateRole && index.column() == kObject) {
    return change.is_wanted ? Qt::Checked : Qt::Unchecked;
  }
  if (role == Qt::ToolTipRole) {
    const std::array texts = {change.dn, field.attribute, field.before, field.after};
    return PlainToolTip(ToQString(texts.at(static_cast<std::size_t>(index.column()))));
  }
  if (!IsShownText(role)) return {};
  switch (index.column()) {
    case kObject:
      return OneLine(change.name);
    case kField:
      return OneLine(field.field);
    case kOld:
      return OneLine(field.before);
    default:
      return OneLine(field.after);
  }
}

Qt::ItemFlags ReviewModel::flags(const QModelIndex& index) const {
  const Row& row = rows_[static_cast<std::size_t>(index.row())];
  Qt::ItemFlags flags = Qt::ItemIsSelectable;
  if (review_.changes[row.change].is_wanted || index.column() == kObject) {
    flags |= Qt::ItemIsEnabled;
  }
  return index.column() == kObject ? flags | Qt::ItemIsUserCheckable : flags;
}

bool ReviewModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::CheckStateRole || index.column() != kObject) return false;
  const std::size_t change = rows_[static_cast<std::size_t>(index.row())].change;
  review_.changes[change].is_wanted = value.toInt() == Qt::Checked;
  TellAllChanged();
  if (on_changed) on_changed();
  return true;
}

std::size_t ReviewModel::WantedCount() const {
  return static_cast<std::size_t>(
      std::ranges::count_if(review_.changes, &session::ReviewedChange::is_wanted));
}

}  // namespace pelora::console
