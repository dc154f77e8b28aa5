// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <vector>

#include "hosts/console/writing/table_rows.h"
#include "hosts/session/writing_desk.h"

namespace pelora::console {

/// The rows of a review: one for each field of each object. The box stands by each object's name
/// and takes all its rows in or out.
class ReviewModel final : public TableRows {
 public:
  enum Column { kObject, kField, kOld, kNew, kColumnCount };

  /// `review` outlives the model.
  ReviewModel(session::Review& review, QObject* parent);

  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

  /// How many objects are to be written.
  [[nodiscard]] std::size_t WantedCount() const;

  /// Something was taken out or in.
  std::function<void()> on_changed;

 private:
  struct Row {
    std::size_t change;
    std::size_t field;
  };

  [[nodiscard]] std::size_t CountRows() const override;
  [[nodiscard]] QVariant DataOf(const QModelIndex& index, int role) const override;

  session::Review& review_;
  std::vector<Row> rows_;
};

}  // namespace pelora::console
