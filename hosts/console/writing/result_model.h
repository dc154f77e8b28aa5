// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <vector>

#include "hosts/console/writing/table_rows.h"
#include "hosts/session/writing_desk.h"

namespace pelora::console {

/// What became of objects, one row each: all of them, or those that are not done.
class ResultModel final : public TableRows {
 public:
  enum Column { kResult, kObject, kReason, kColumnCount };
  /// All that there is to say of a row: object, reason, the directory's own words.
  static constexpr int kWholeRole = Qt::UserRole;

  /// `results` outlive the model.
  ResultModel(std::span<const session::WrittenChange> results, QObject* parent);

  void ShowOnlyLeft(bool only_left);

 private:
  [[nodiscard]] std::size_t CountRows() const override;
  [[nodiscard]] QVariant DataOf(const QModelIndex& index, int role) const override;
  std::span<const session::WrittenChange> results_;
  std::vector<const session::WrittenChange*> rows_;
};

/// What an outcome is called: "written", "unchanged", "refused", "failed", "unknown", "not begun".
[[nodiscard]] QString WordFor(changes::Outcome outcome);

}  // namespace pelora::console
