// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/writing/conflict_model.h"

#include <algorithm>
#include <array>

#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"

namespace pelora::console {
namespace {

constexpr std::array kConflictHeadings = {"Object",       "Field",       "You saw",
                                          "There is now", "You entered", "What stays"};

}  // namespace

ConflictModel::ConflictModel(std::span<const session::ShownConflict> conflicts, QObject* parent)
    : TableRows(kConflictHeadings, parent), conflicts_(conflicts) {
  for (const session::ShownConflict& conflict : conflicts) choices_.push_back(conflict.choice);
}

std::vector<ConflictModel::Choice> ConflictModel::ChoicesOf(int row) const {
  std::vector<Choice> choices = {Choice::kTheirs, Choice::kMine};
  if (conflicts_[static_cast<std::size_t>(row)].is_list) choices.push_back(Choice::kBoth);
  return choices;
}

QString ConflictModel::TextOf(Choice choice) {
  switch (choice) {
    case Choice::kTheirs:
      return QStringLiteral("Keep theirs");
    case Choice::kMine:
      return QStringLiteral("Write mine");
    case Choice::kBoth:
      break;
  }
  return QStringLiteral("Both");
}

ConflictModel::Choice ConflictModel::ChoiceOf(int row) const {
  return choices_.at(static_cast<std::size_t>(row));
}

void ConflictModel::Choose(int row, Choice choice) {
  const std::vector<Choice> possible = ChoicesOf(row);
  if (std::ranges::find(possible, choice) == possible.end()) return;
  choices_.at(static_cast<std::size_t>(row)) = choice;
  dataChanged(index(row, kChoice), index(row, kChoice));
}

void ConflictModel::ChooseForAll(Choice choice) {
  std::ranges::fill(choices_, choice);
  if (!choices_.empty()) dataChanged(index(0, kChoice), index(rowCount() - 1, kChoice));
}

std::size_t ConflictModel::CountRows() const { return conflicts_.size(); }

QVariant ConflictModel::DataOf(const QModelIndex& index, int role) const {
  const session::ShownConflict& conflict = conflicts_[static_cast<std::size_t>(index.row())];
  const bool is_shown = IsShownText(role);
  if (index.column() == kChoice) {
    return is_shown ? QVariant(TextOf(ChoiceOf(index.row()))) : QVariant();
  }
  const std::array texts = {&conflict.name, &conflict.field, &conflict.seen, &conflict.there,
                            &conflict.wanted};
  const QString text = ToQString(*texts.at(static_cast<std::size_t>(index.column())));
  if (role == Qt::ToolTipRole) {
    return PlainToolTip(index.column() == kObject ? ToQString(conflict.dn) : text);
  }
  return is_shown ? QVariant(Readable(text).simplified()) : QVariant();
}

}  // namespace pelora::console
