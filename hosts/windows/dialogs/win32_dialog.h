// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>

#include "hosts/windows/dialogs/win32_combo_box.h"
#include "hosts/windows/dialogs/win32_list_box.h"
#include "hosts/windows/dialogs/win32_list_view.h"

namespace pelora::windows {

/// Whether a dialog is a page of a sheet or stands on its own.
enum class DialogRole : std::uint8_t { kPage, kModal };

/// A dialog window behind the port. It owns nothing of the system's; after `Forget` every control
/// is missing.
class Win32Dialog final : public IDialog {
 public:
  Win32Dialog(HWND window, DialogRole role) : window_(window), role_(role) {}
  virtual ~Win32Dialog() = default;
  Win32Dialog(const Win32Dialog&) = delete;
  Win32Dialog& operator=(const Win32Dialog&) = delete;

  [[nodiscard]] HWND window() const { return window_; }
  /// The window is going.
  void Forget();

  [[nodiscard]] std::string Text(ControlId id) const override;
  void SetText(ControlId id, std::string_view text) override;
  [[nodiscard]] bool IsEnabled(ControlId id) const override;
  void SetEnabled(ControlId id, bool enabled) override;
  [[nodiscard]] bool IsShown(ControlId id) const override;
  void SetShown(ControlId id, bool shown) override;
  [[nodiscard]] CheckState Check(ControlId id) const override;
  void SetCheck(ControlId id, CheckState state) override;
  [[nodiscard]] ButtonStyle Style(ControlId id) const override;
  void SetStyle(ControlId id, ButtonStyle style) override;
  [[nodiscard]] IListBox& ListBox(ControlId id) override;
  [[nodiscard]] IComboBox& ComboBox(ControlId id) override;
  [[nodiscard]] IListView& ListView(ControlId id) override;
  [[nodiscard]] int ClientWidth(ControlId id) const override;
  void SetPageModified(bool modified) override;
  void End(std::int32_t result) override;

 private:
  [[nodiscard]] ControlWindow Control(ControlId id) const { return {window_, id}; }
  [[nodiscard]] ControlWindow CheckBox(ControlId id) const;

  HWND window_;
  DialogRole role_;
  // Made when asked for and kept: the ports hand out references.
  std::map<ControlId, Win32ListBox> list_boxes_;
  std::map<ControlId, Win32ComboBox> combo_boxes_;
  std::map<ControlId, Win32ListView> list_views_;
};

/// The window of a dialog that this host made; null for none.
[[nodiscard]] HWND WindowOf(IDialog* dialog);
/// The window that owns what opens over a dialog: the dialog's own, else the active one.
[[nodiscard]] HWND OwnerWindow(IDialog* dialog);

}  // namespace pelora::windows
