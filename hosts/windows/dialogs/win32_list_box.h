// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/windows/dialogs/control_window.h"

namespace pelora::windows {

/// A list box window, or none.
class Win32ListBox final : public IListBox {
 public:
  Win32ListBox(ControlWindow window, HWND dialog) : window_(window), dialog_(dialog) {}

  std::optional<RowIndex> Add(std::string_view text) override;
  bool Remove(RowIndex row) override;
  void Clear() override;
  [[nodiscard]] RowIndex Count() const override;
  [[nodiscard]] std::string Text(RowIndex row) const override;
  [[nodiscard]] void* Data(RowIndex row) const override;
  void SetData(RowIndex row, void* data) override;
  [[nodiscard]] std::optional<RowIndex> Selection() const override;
  void Select(std::optional<RowIndex> row) override;
  void SetTabStops(std::span<const int> stops) override;

 private:
  ControlWindow window_;
  HWND dialog_;
};

}  // namespace pelora::windows
