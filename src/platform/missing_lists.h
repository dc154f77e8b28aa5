// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/dialog.h"

namespace pelora {

/// The list box that stands for one that the dialog lacks: always empty, refuses rows.
class MissingListBox final : public IListBox {
 public:
  std::optional<RowIndex> Add(std::string_view /*text*/) override { return std::nullopt; }
  bool Remove(RowIndex /*row*/) override { return false; }
  void Clear() override {}
  [[nodiscard]] RowIndex Count() const override { return 0; }
  [[nodiscard]] std::string Text(RowIndex /*row*/) const override { return {}; }
  [[nodiscard]] void* Data(RowIndex /*row*/) const override { return nullptr; }
  void SetData(RowIndex /*row*/, void* /*data*/) override {}
  [[nodiscard]] std::optional<RowIndex> Selection() const override { return std::nullopt; }
  void Select(std::optional<RowIndex> /*row*/) override {}
  void SetTabStops(std::span<const int> /*stops*/) override {}
};

/// The drop-down list that stands for one that the dialog lacks.
class MissingComboBox final : public IComboBox {
 public:
  void Add(std::string_view /*text*/) override {}
  void Clear() override {}
  [[nodiscard]] RowIndex Count() const override { return 0; }
  [[nodiscard]] std::string Text(RowIndex /*row*/) const override { return {}; }
  [[nodiscard]] std::optional<RowIndex> Selection() const override { return std::nullopt; }
  void Select(std::optional<RowIndex> /*row*/) override {}
};

/// The list view that stands for one that the dialog lacks.
class MissingListView final : public IListView {
 public:
  void SetFullRowSelect(bool /*full*/) override {}
  void InsertColumn(std::size_t /*column*/, std::string_view /*title*/, int /*width*/) override {}
  void InsertRow(RowIndex /*row*/, std::string_view /*text*/) override {}
  [[nodiscard]] RowIndex RowCount() const override { return 0; }
  [[nodiscard]] std::string Text(RowIndex /*row*/, std::size_t /*column*/) const override {
    return {};
  }
  void SetText(RowIndex /*row*/, std::size_t /*column*/, std::string_view /*text*/) override {}
  [[nodiscard]] bool IsSelected(RowIndex /*row*/) const override { return false; }
  void SetSelected(RowIndex /*row*/, bool /*selected*/) override {}
};

}  // namespace pelora
