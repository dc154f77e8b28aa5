// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/windows/dialogs/control_window.h"

namespace pelora::windows {

/// A drop-down list window, or none.
class Win32ComboBox final : public IComboBox {
 public:
  explicit Win32ComboBox(ControlWindow window) : window_(window) {}

  void Add(std::string_view text) override;
  void Clear() override;
  [[nodiscard]] RowIndex Count() const override;
  [[nodiscard]] std::string Text(RowIndex row) const override;
  [[nodiscard]] std::optional<RowIndex> Selection() const override;
  void Select(std::optional<RowIndex> row) override;

 private:
  ControlWindow window_;
};

}  // namespace pelora::windows
