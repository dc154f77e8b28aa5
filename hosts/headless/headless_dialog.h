// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "hosts/headless/headless_control.h"
#include "hosts/resources/dialog_template.h"
#include "platform/dialog_controller.h"
#include "platform/missing_lists.h"

namespace pelora {

/// A dialog in memory, made from a template: it behaves as one on the screen does wherever its
/// controller can tell. What the person in front of it does is played by `HeadlessUser`.
///
/// The controller outlives the dialog. Lengths are pixels at base units of 6 by 13.
class HeadlessDialog final : public IDialog {
 public:
  enum class Role : std::uint8_t { kPage, kModal };

  /// Makes the controls; the controller is told nothing yet.
  HeadlessDialog(const resources::DialogTemplate& described, IDialogController& controller,
                 Role role = Role::kPage);
  HeadlessDialog(const HeadlessDialog&) = delete;
  HeadlessDialog& operator=(const HeadlessDialog&) = delete;
  /// Closes the dialog.
  ~HeadlessDialog();

  /// Tells the controller that the dialog stands, once, and gives its answer.
  std::int32_t Open();
  /// Tells the controller that the dialog goes, unless it was told before or the dialog never
  /// stood. From then on nothing reaches the controller.
  void Close();
  [[nodiscard]] bool IsOpen() const { return open_; }

  [[nodiscard]] Role role() const { return role_; }
  [[nodiscard]] const std::string& title() const { return title_; }
  /// In tab order.
  [[nodiscard]] const std::vector<HeadlessControl>& controls() const { return controls_; }
  /// The first control of that id; null when there is none.
  [[nodiscard]] HeadlessControl* Find(ControlId id);
  [[nodiscard]] const HeadlessControl* Find(ControlId id) const;
  /// Reports something to the controller as the control would; 0 when the dialog is closed.
  std::int32_t Notify(ControlId id, ControlNotification notification);
  [[nodiscard]] IDialogController& controller() { return controller_; }

  /// Told what the page says of its changes. May be none.
  std::function<void(bool modified)> on_page_modified;
  /// The last that the page said of its changes; none before it said any.
  [[nodiscard]] std::optional<bool> PageModified() const { return page_modified_; }
  /// The result with which a modal dialog was ended; none before that.
  [[nodiscard]] std::optional<std::int32_t> Result() const { return result_; }

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
  /// The first result counts.
  void End(std::int32_t result) override;

 private:
  [[nodiscard]] HeadlessControl* FindCheckBox(ControlId id);
  void ListViewChanged(ControlId id, const ListViewItemChange& change);

  IDialogController& controller_;
  Role role_;
  std::string title_;
  /// In the same order; the numbers by themselves are searched through quickly.
  std::vector<HeadlessControl> controls_;
  std::vector<ControlId> ids_;
  MissingListBox missing_list_box_;
  MissingComboBox missing_combo_box_;
  MissingListView missing_list_view_;
  bool open_ = false;
  std::optional<bool> page_modified_;
  std::optional<std::int32_t> result_;
};

}  // namespace pelora
