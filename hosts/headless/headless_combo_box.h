// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "platform/dialog.h"

namespace pelora {

/// A drop-down list in memory. Its rows stand in the order in which they were added.
class HeadlessComboBox final : public IComboBox {
 public:
  void Add(std::string_view text) override { rows_.emplace_back(text); }
  void Clear() override;
  [[nodiscard]] RowIndex Count() const override { return rows_.size(); }
  [[nodiscard]] std::string Text(RowIndex row) const override;
  [[nodiscard]] std::optional<RowIndex> Selection() const override { return selection_; }
  void Select(std::optional<RowIndex> row) override;

 private:
  std::vector<std::string> rows_;
  std::optional<RowIndex> selection_;
};

}  // namespace pelora
