// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/missing_lists.h"

namespace pelora {

/// The dialog that stands for one that is not there: it lacks every control (see `IDialog`).
class MissingDialog final : public IDialog {
 public:
  [[nodiscard]] std::string Text(ControlId /*id*/) const override { return {}; }
  void SetText(ControlId /*id*/, std::string_view /*text*/) override {}
  [[nodiscard]] bool IsEnabled(ControlId /*id*/) const override { return false; }
  void SetEnabled(ControlId /*id*/, bool /*enabled*/) override {}
  [[nodiscard]] bool IsShown(ControlId /*id*/) const override { return false; }
  void SetShown(ControlId /*id*/, bool /*shown*/) override {}
  [[nodiscard]] CheckState Check(ControlId /*id*/) const override { return CheckState::kUnchecked; }
  void SetCheck(ControlId /*id*/, CheckState /*state*/) override {}
  [[nodiscard]] ButtonStyle Style(ControlId /*id*/) const override {
    return ButtonStyle::kAutoCheckBox;
  }
  void SetStyle(ControlId /*id*/, ButtonStyle /*style*/) override {}
  [[nodiscard]] IListBox& ListBox(ControlId /*id*/) override { return list_box_; }
  [[nodiscard]] IComboBox& ComboBox(ControlId /*id*/) override { return combo_box_; }
  [[nodiscard]] IListView& ListView(ControlId /*id*/) override { return list_view_; }
  [[nodiscard]] int ClientWidth(ControlId /*id*/) const override { return 0; }
  void SetPageModified(bool /*modified*/) override {}
  void End(std::int32_t /*result*/) override {}

 private:
  MissingListBox list_box_;
  MissingComboBox combo_box_;
  MissingListView list_view_;
};

}  // namespace pelora
