// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QSize>
#include <QString>
#include <QWidget>
#include <string>
#include <string_view>

#include "hosts/console/dialogs/stretch.h"
#include "hosts/resources/dialog_template.h"
#include "platform/dialog.h"
#include "platform/dialog_controller.h"

namespace pelora::console {

/// Where the controls of a dialog report to.
class ControlEvents {
 public:
  virtual void OnControl(ControlId id, ControlNotification notification) = 0;
  virtual void OnListViewItemChanged(ControlId id, const ListViewItemChange& change) = 0;
  virtual void OnListViewDoubleClick(ControlId id, RowIndex row) = 0;
  [[nodiscard]] virtual TextRole ListViewTextRole(ControlId id, RowIndex row,
                                                  std::size_t column) const = 0;

 protected:
  ~ControlEvents() = default;
};

/// What a kind of control makes of more room than its template gives it.
struct Stretching {
  Growth across = Growth::kRigid;
  Growth down = Growth::kRigid;
  /// It lies around other controls.
  bool is_frame = false;
};

/// One control of a dialog: a native widget, seen through its template's number.
///
/// The widget is a child of the dialog's and belongs to it. What a kind of control does not have it
/// takes without effect: the defaults below. Reports go out for what the administrator does, and
/// from edit controls also when a program sets the text.
class DialogControl {
 public:
  /// Takes the template's bits (shown, disabled, tab stop) over to the widget.
  DialogControl(const resources::DialogItem& item, QWidget& widget, ControlEvents& events);
  virtual ~DialogControl() = default;
  DialogControl(const DialogControl&) = delete;
  DialogControl& operator=(const DialogControl&) = delete;

  [[nodiscard]] ControlId id() const { return id_; }
  [[nodiscard]] QWidget& widget() const { return widget_; }

  [[nodiscard]] bool IsEnabled() const { return widget_.isEnabledTo(widget_.parentWidget()); }
  void SetEnabled(bool enabled) { widget_.setEnabled(enabled); }
  [[nodiscard]] bool IsShown() const { return !widget_.isHidden(); }
  void SetShown(bool shown) { widget_.setVisible(shown); }

  /// What stands on the control, or names the one that it belongs to, such that a key may lead
  /// there; empty where none can.
  [[nodiscard]] virtual QString Caption() const { return {}; }
  /// Shows the caption with the letter marked that is its key. Nothing else notices.
  virtual void ShowCaption(const QString& /*marked*/) {}

  [[nodiscard]] virtual std::string Text() const { return {}; }
  virtual void SetText(std::string_view /*text*/) {}

  [[nodiscard]] virtual CheckState Check() const { return CheckState::kUnchecked; }
  virtual void SetCheck(CheckState /*state*/) {}
  [[nodiscard]] virtual ButtonStyle Style() const { return ButtonStyle::kAutoCheckBox; }
  virtual void SetStyle(ButtonStyle /*style*/) {}

  /// Null for a control of another kind.
  [[nodiscard]] virtual IListBox* ListBox() { return nullptr; }
  [[nodiscard]] virtual IComboBox* ComboBox() { return nullptr; }
  [[nodiscard]] virtual IListView* ListView() { return nullptr; }

  /// Width of the inner area.
  [[nodiscard]] virtual int ClientWidth() const { return widget_.contentsRect().width(); }
  /// The room that the control's own text and frame need, without which something would be cut off;
  /// 0 where any room will do.
  [[nodiscard]] virtual QSize NeededSize() const { return {}; }
  [[nodiscard]] virtual Stretching stretching() const { return {}; }
  /// Makes a click as the mouse does; nothing on a control that takes none or is disabled.
  virtual void Click() {}

 protected:
  void Notify(ControlNotification notification) { events_.OnControl(id_, notification); }
  [[nodiscard]] ControlEvents& events() const { return events_; }

 private:
  ControlId id_;
  QWidget& widget_;
  ControlEvents& events_;
};

}  // namespace pelora::console
