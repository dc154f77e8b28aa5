// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractTableModel>
#include <span>
#include <vector>

#include "hosts/session/commands/selection_command.h"

namespace pelora::console {

/// What a command would do to each of the selected objects, one row each.
class PlanModel final : public QAbstractTableModel {
 public:
  enum Column { kObject, kBefore, kAfter, kNote, kColumnCount };

  /// The selection outlives the model.
  PlanModel(std::span<const session::DirectoryObject> selection, QObject* parent)
      : QAbstractTableModel(parent), selection_(selection) {}

  /// `with_odd`: what is odd is written, too.
  void Show(std::vector<session::PlannedObject> planned, bool with_odd);
  void SetWithOdd(bool with_odd);
  [[nodiscard]] const std::vector<session::PlannedObject>& planned() const { return planned_; }

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;

 private:
  [[nodiscard]] QString TextOf(const session::PlannedObject& object, int column) const;

  std::span<const session::DirectoryObject> selection_;
  std::vector<session::PlannedObject> planned_;
  bool with_odd_ = false;
};

}  // namespace pelora::console
