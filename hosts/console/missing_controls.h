// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/dialog.h"

namespace pelora::console {

/// The lists that a dialog lacks: empty, and they refuse rows.
class MissingListBox final : public IListBox {
  std::optional<RowIndex> Add(std::string_view) override { return std::nullopt; }
  bool Remove(RowIndex) override { return false; }
  void Clear() override {}
  [[nodiscard]] RowIndex Count() const override { return 0; }
  [[nodiscard]] std::string Text(RowIndex) const override { return {}; }
  [[nodiscard]] void* Data(RowIndex) const override { return nullptr; }
  void SetData(RowIndex, void*) override {}
  [[nodiscard]] std::optional<RowIndex> Selection() const override { return std::nullopt; }
  void Select(std::optional<RowIndex>) override {}
  void SetTabStops(std::span<const int>) override {}
};

class MissingComboBox final : public IComboBox {
  void Add(std::string_view) override {}
  void Clear() override {}
  [[nodiscard]] RowIndex Count() const override { return 0; }
  [[nodiscard]] std::string Text(RowIndex) const override { return {}; }
  [[nodiscard]] std::optional<RowIndex> Selection() const override { return std::nullopt; }
  void Select(std::optional<RowIndex>) override {}
};

class MissingListView final : public IListView {
  void SetFullRowSelect(bool) override {}
  void InsertColumn(std::size_t, std::string_view, int) override {}
  void InsertRow(RowIndex, std::string_view) override {}
  [[nodiscard]] RowIndex RowCount() const override { return 0; }
  [[nodiscard]] std::string Text(RowIndex, std::size_t) const override { return {}; }
  void SetText(RowIndex, std::size_t, std::string_view) override {}
  [[nodiscard]] bool IsSelected(RowIndex) const override { return false; }
  void SetSelected(RowIndex, bool) override {}
};

}  // namespace pelora::console
