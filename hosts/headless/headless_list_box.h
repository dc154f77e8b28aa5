// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "hosts/headless/headless_text_service.h"
#include "platform/dialog.h"

namespace pelora {

/// A list box in memory.
class HeadlessListBox final : public IListBox {
 public:
  /// A sorted one puts each new row where its `ListOrderKey` has it, behind its equals.
  explicit HeadlessListBox(bool sorted) : sorted_(sorted) {}

  std::optional<RowIndex> Add(std::string_view text) override;
  bool Remove(RowIndex row) override;
  void Clear() override;
  [[nodiscard]] RowIndex Count() const override { return rows_.size(); }
  [[nodiscard]] std::string Text(RowIndex row) const override;
  [[nodiscard]] void* Data(RowIndex row) const override;
  void SetData(RowIndex row, void* data) override;
  [[nodiscard]] std::optional<RowIndex> Selection() const override { return selection_; }
  void Select(std::optional<RowIndex> row) override;
  void SetTabStops(std::span<const int> stops) override {
    tab_stops_.assign(stops.begin(), stops.end());
  }

  [[nodiscard]] const std::vector<int>& tab_stops() const { return tab_stops_; }

 private:
  struct Row {
    std::string text;
    /// Empty in a list box that is not sorted.
    std::string order_key;
    void* data = nullptr;
  };

  bool sorted_;
  HeadlessTextService text_service_;
  std::vector<Row> rows_;
  std::optional<RowIndex> selection_;
  std::vector<int> tab_stops_;
};

}  // namespace pelora
