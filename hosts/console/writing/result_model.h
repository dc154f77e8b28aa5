// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractTableModel>
#include <span>
#include <vector>

#include "hosts/session/writing_desk.h"

namespace pelora::console {

/// What became of objects, one row each: all of them, or those that are not done.
class ResultModel final : public QAbstractTableModel {
 public:
  enum Column { kResult, kObject, kReason, kColumnCount };
  /// All that there is to say of a row: object, reason, the directory's own words.
  static constexpr int kWholeRole = Qt::UserRole;

  /// `results` outlive the model.
  ResultModel(std::span<const session::WrittenChange> results, QObject* parent);

  void ShowOnlyLeft(bool only_left);

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;

 private:
  [[nodiscard]] QVariant DataOf(const QModelIndex& index, int role) const;

  std::span<const session::WrittenChange> results_;
  std::vector<const session::WrittenChange*> rows_;
};

/// What an outcome is called: "written", "unchanged", "refused", "failed", "unknown", "not begun".
[[nodiscard]] QString WordFor(changes::Outcome outcome);

}  // namespace pelora::console
