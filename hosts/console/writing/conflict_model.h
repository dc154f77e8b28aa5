// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <vector>

#include "hosts/console/writing/table_rows.h"
#include "hosts/session/writing_desk.h"

namespace pelora::console {

/// Fields that somebody else changed meanwhile, one row each, with what is to stay. What is chosen
/// is the model's alone.
class ConflictModel final : public TableRows {
 public:
  using Choice = session::ShownConflict::Choice;
  enum Column { kObject, kField, kSeen, kThere, kWanted, kChoice, kColumnCount };

  /// `conflicts` outlive the model.
  ConflictModel(std::span<const session::ShownConflict> conflicts, QObject* parent);

  /// What can be chosen of a row, and what a choice is called.
  [[nodiscard]] std::vector<Choice> ChoicesOf(int row) const;
  [[nodiscard]] static QString TextOf(Choice choice);
  [[nodiscard]] Choice ChoiceOf(int row) const;
  /// Nothing happens where it cannot be chosen.
  void Choose(int row, Choice choice);
  void ChooseForAll(Choice choice);

 private:
  [[nodiscard]] std::size_t CountRows() const override;
  [[nodiscard]] QVariant DataOf(const QModelIndex& index, int role) const override;
  std::span<const session::ShownConflict> conflicts_;
  std::vector<Choice> choices_;
};

}  // namespace pelora::console
