// SPDX-License-Identifier: Apache-2.0
#include "hosts/headless/headless_combo_box.h"

namespace pelora {

void HeadlessComboBox::Clear() {
  rows_.clear();
  selection_.reset();
}

std::string HeadlessComboBox::Text(RowIndex row) const {
  return row < rows_.size() ? rows_[row] : std::string();
}

void HeadlessComboBox::Select(std::optional<RowIndex> row) {
  selection_ = row && *row < rows_.size() ? row : std::nullopt;
}

}  // namespace pelora
