// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace pelora {

/// Number of a control in its dialog template.
using ControlId = std::uint32_t;
/// Number of a dialog template.
using DialogId = std::uint16_t;
/// Position of a row in a list, from 0.
using RowIndex = std::size_t;

/// State of a check box, with the platform's numbers.
enum class CheckState : std::uint32_t { kUnchecked = 0, kChecked = 1, kIndeterminate = 2 };

/// Behaviour of a button, with the platform's numbers: an automatic box changes its state by itself
/// when clicked, a three-state one goes unchecked, checked, indeterminate.
enum class ButtonStyle : std::uint32_t { kAutoCheckBox = 3, kAutoThreeState = 6 };

/// A list box. Rows of a sorted list box stand in the host's collation order, so that a row's
/// position says nothing of when it was added; the row's data tells whose it is.
///
/// Changes made here raise no notification; only the user's do.
class IListBox {
 public:
  /// Adds a row where it belongs and gives its position, or nothing when the list box refuses it.
  virtual std::optional<RowIndex> Add(std::string_view text) = 0;
  /// Removes a row, and the selection with it if it was the selected one; false when there is none
  /// such.
  virtual bool Remove(RowIndex row) = 0;
  virtual void Clear() = 0;
  [[nodiscard]] virtual RowIndex Count() const = 0;
  [[nodiscard]] virtual std::string Text(RowIndex row) const = 0;
  /// The pointer attached to a row; null when none was.
  [[nodiscard]] virtual void* Data(RowIndex row) const = 0;
  virtual void SetData(RowIndex row, void* data) = 0;
  [[nodiscard]] virtual std::optional<RowIndex> Selection() const = 0;
  /// Selects a row, or none. A row that does not exist selects none.
  virtual void Select(std::optional<RowIndex> row) = 0;
  /// Tab stops from the left edge, in the units of `IDialog::ClientWidth`.
  virtual void SetTabStops(std::span<const int> stops) = 0;

 protected:
  ~IListBox() = default;
};

/// A drop-down list without an edit field. Changes made here raise no notification.
class IComboBox {
 public:
  virtual void Add(std::string_view text) = 0;
  virtual void Clear() = 0;
  [[nodiscard]] virtual RowIndex Count() const = 0;
  [[nodiscard]] virtual std::string Text(RowIndex row) const = 0;
  [[nodiscard]] virtual std::optional<RowIndex> Selection() const = 0;
  /// Selects a row, or none. A row that does not exist selects none.
  virtual void Select(std::optional<RowIndex> row) = 0;

 protected:
  ~IComboBox() = default;
};

/// A list view in report form: rows of texts under column heads, several rows selectable.
///
/// Unlike the list box it reports every change of a row's selection to the dialog's controller,
/// whoever made it.
class IListView {
 public:
  /// Rows are selected over their full width, not in the first column alone.
  virtual void SetFullRowSelect(bool full) = 0;
  /// `width` in the units of `IDialog::ClientWidth`.
  virtual void InsertColumn(std::size_t column, std::string_view title, int width) = 0;
  virtual void InsertRow(RowIndex row, std::string_view text) = 0;
  [[nodiscard]] virtual RowIndex RowCount() const = 0;
  [[nodiscard]] virtual std::string Text(RowIndex row, std::size_t column) const = 0;
  virtual void SetText(RowIndex row, std::size_t column, std::string_view text) = 0;
  [[nodiscard]] virtual bool IsSelected(RowIndex row) const = 0;
  virtual void SetSelected(RowIndex row, bool selected) = 0;

 protected:
  ~IListView() = default;
};

/// The controls of one open dialog, by their template's numbers.
///
/// A control that the template lacks, or that is not of the kind asked for, takes everything and
/// does nothing: its text is empty, it is unchecked, disabled and hidden, its lists are empty and
/// refuse rows. All calls come on the thread of the user interface. Texts are UTF-8; a "&" in a
/// label marks its mnemonic.
class IDialog {
 public:
  [[nodiscard]] virtual std::string Text(ControlId id) const = 0;
  /// Sets a control's text. An edit control reports the change to the controller
  /// (`ControlNotification::kEditChange`) before this returns, also when the text is the same.
  virtual void SetText(ControlId id, std::string_view text) = 0;

  [[nodiscard]] virtual bool IsEnabled(ControlId id) const = 0;
  virtual void SetEnabled(ControlId id, bool enabled) = 0;
  /// Whether the control itself is shown, be the dialog on the screen or not.
  [[nodiscard]] virtual bool IsShown(ControlId id) const = 0;
  virtual void SetShown(ControlId id, bool shown) = 0;

  [[nodiscard]] virtual CheckState Check(ControlId id) const = 0;
  /// Sets the state without a notification. A two-state box given the indeterminate state shows
  /// checked.
  virtual void SetCheck(ControlId id, CheckState state) = 0;
  [[nodiscard]] virtual ButtonStyle Style(ControlId id) const = 0;
  /// Changes a check box's behaviour and redraws it. Its state stays as it is.
  virtual void SetStyle(ControlId id, ButtonStyle style) = 0;

  [[nodiscard]] virtual IListBox& ListBox(ControlId id) = 0;
  [[nodiscard]] virtual IComboBox& ComboBox(ControlId id) = 0;
  [[nodiscard]] virtual IListView& ListView(ControlId id) = 0;

  /// Width of a control's inner area, in the host's units of length; 0 for a control that is
  /// missing.
  [[nodiscard]] virtual int ClientWidth(ControlId id) const = 0;

  /// Tells the property sheet that holds this dialog as a page whether the page has changes to
  /// apply (the sheet's "changed" and "unchanged" messages). Without a sheet nothing happens.
  virtual void SetPageModified(bool modified) = 0;

  /// Ends a modal dialog with a result. On a page nothing happens.
  virtual void End(std::int32_t result) = 0;

 protected:
  ~IDialog() = default;
};

}  // namespace pelora
