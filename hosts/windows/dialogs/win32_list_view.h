// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/windows/dialogs/control_window.h"

namespace pelora::windows {

/// A list view window in report form, or none.
class Win32ListView final : public IListView {
 public:
  explicit Win32ListView(ControlWindow window) : window_(window) {}

  void SetFullRowSelect(bool full) override;
  void InsertColumn(std::size_t column, std::string_view title, int width) override;
  void InsertRow(RowIndex row, std::string_view text) override;
  [[nodiscard]] RowIndex RowCount() const override;
  [[nodiscard]] std::string Text(RowIndex row, std::size_t column) const override;
  void SetText(RowIndex row, std::size_t column, std::string_view text) override;
  [[nodiscard]] bool IsSelected(RowIndex row) const override;
  void SetSelected(RowIndex row, bool selected) override;

 private:
  ControlWindow window_;
};

}  // namespace pelora::windows
