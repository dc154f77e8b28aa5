// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>

#include "hosts/console/dialogs/dialog_layout.h"
#include "hosts/resources/dialog_template.h"
#include "platform/dialog.h"
#include "platform/dialog_controller.h"
#include "platform/missing_lists.h"

namespace pelora::console {

/// The property of a widget that cannot be used which says why.
inline constexpr const char* kWhyReadOnly = "why_read_only";

/// What a dialog tells the window that holds it.
struct DialogHost {
  /// A page has changes to apply, or none any more.
  std::function<void(bool modified)> set_modified;
  /// A modal dialog is to end.
  std::function<void(std::int32_t result)> end;
  /// Letters that the window itself has keys with.
  QString taken_keys{};
};

/// A dialog of native widgets, laid out as a template says.
///
/// The widgets stand in one frameless widget that the holder shows where it likes: in a tab of a
/// property sheet, or alone in a window. It is not smaller than the template says; in more room its
/// controls are stretched. The holder makes the dialog, calls `Open` once, and
/// destroys it; the controller hears of the end and of nothing after that.
class QtDialog final : public IDialog, private ControlEvents {
 public:
  /// Makes the widgets, as a child of `parent`, which outlives the dialog, as does `controller`.
  QtDialog(const resources::DialogTemplate& dialog, IDialogController& controller, QWidget& parent,
           DialogHost host);
  ~QtDialog();
  QtDialog(const QtDialog&) = delete;
  QtDialog& operator=(const QtDialog&) = delete;

  /// Tells the controller that the dialog stands; gives its answer.
  std::int32_t Open();

  [[nodiscard]] QWidget& widget() const { return *widget_; }
  /// Whether more height than the template gives is of any use.
  [[nodiscard]] bool GrowsDown() const { return layout_->GrowsDown(); }
  /// Null for a control that the template lacks.
  [[nodiscard]] DialogControl* Find(ControlId id) const;
  /// Clicks a button, or reports a click of that number when the template has no such button.
  void Click(ControlId id);
  /// Puts the controls behind `before` in the window's tab order; gives the last one.
  QWidget* PutInTabOrder(QWidget& before);
  /// From now on a control cannot be used, whatever the page says, and says why. What the page is
  /// told of it is what it has said itself.
  void SetReadOnly(ControlId id, const QString& why);
  /// Gives the focus to the first control that can take it.
  void FocusFirst();

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
  void OnControl(ControlId id, ControlNotification notification) override;
  void OnListViewItemChanged(ControlId id, const ListViewItemChange& change) override;
  void OnListViewDoubleClick(ControlId id, RowIndex row) override;
  [[nodiscard]] TextRole ListViewTextRole(ControlId id, RowIndex row,
                                          std::size_t column) const override;

  IDialogController& controller_;
  DialogHost host_;
  bool is_open_ = false;
  /// Controls that cannot be used, and whether the page would have it otherwise.
  std::map<ControlId, bool> read_only_;
  MissingListBox missing_list_box_;
  MissingComboBox missing_combo_box_;
  MissingListView missing_list_view_;
  // The widgets go first: what they still report while going finds the controls standing.
  DialogControls controls_;
  std::optional<DialogLayout> layout_;
  std::unique_ptr<QWidget> widget_;
};

/// The window that a box or dialog owned by `owner` belongs to; without owner the active window,
/// which may be none.
[[nodiscard]] QWidget* WindowOf(IDialog* owner);

/// Shows a modal window until it ends and gives its result. Its owner is the active window then, at
/// once, so that what is shown next belongs to it.
int RunModal(QDialog& window);

/// Whether a dialog, a box or a menu is waited for, or has been and its caller is not through yet.
/// What it works with has to stay.
[[nodiscard]] bool IsModalRunning();

}  // namespace pelora::console
