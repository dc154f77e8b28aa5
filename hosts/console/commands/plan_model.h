// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <vector>

#include "hosts/console/writing/table_rows.h"
#include "hosts/session/commands/selection_command.h"

namespace pelora::console {

/// What a command would do to each of the selected objects, one row each.
class PlanModel final : public TableRows {
 public:
  enum Column { kObject, kBefore, kAfter, kNote, kColumnCount };

  /// The selection outlives the model.
  PlanModel(std::span<const session::DirectoryObject> selection, QObject* parent);

  /// `with_odd`: what is odd is written, too.
  void Show(std::vector<session::PlannedObject> planned, bool with_odd);
  void SetWithOdd(bool with_odd);
  [[nodiscard]] const std::vector<session::PlannedObject>& planned() const { return planned_; }

 private:
  [[nodiscard]] std::size_t CountRows() const override;
  [[nodiscard]] QVariant DataOf(const QModelIndex& index, int role) const override;
  [[nodiscard]] QString TextOf(const session::PlannedObject& object, int column) const;

  std::span<const session::DirectoryObject> selection_;
  std::vector<session::PlannedObject> planned_;
  bool with_odd_ = false;
};

}  // namespace pelora::console
