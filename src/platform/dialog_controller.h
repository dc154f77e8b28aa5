// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "platform/dialog.h"
#include "platform/hresult.h"

namespace pelora {

/// What a control reports, with the platform's numbers. Clicks come from buttons, text changes from
/// edit controls, selection changes from list boxes and drop-down lists.
enum class ControlNotification : std::uint16_t {
  kClicked = 0,
  kSelectionChange = 1,
  kEditChange = 0x300,
};

/// What a property sheet or a wizard tells a page, with the platform's numbers.
enum class PageNotification : std::int32_t {
  kSetActive = -200,
  kKillActive = -201,
  kApply = -202,
  kReset = -203,
  kWizardBack = -206,
  kWizardNext = -207,
  kWizardFinish = -208,
  kQueryCancel = -209,
};

/// Answers to `PageNotification::kApply`.
inline constexpr std::int32_t kPageApplied = 0;
/// This page could not apply. The sheet stays open and goes on showing the page that shows, which
/// need not be this one; pages behind this one are not asked any more, pages in front of it have
/// applied.
inline constexpr std::int32_t kPageInvalidStay = 2;

/// Results of modal dialogs and message boxes, and ids of the buttons that give them.
inline constexpr std::int32_t kDialogOk = 1;
inline constexpr std::int32_t kDialogCancel = 2;
inline constexpr std::int32_t kDialogYes = 6;
inline constexpr std::int32_t kDialogNo = 7;

/// A change of one list view row's state.
struct ListViewItemChange {
  RowIndex row = 0;
  /// Whether the change concerns the row's state at all (and not its text, say).
  bool state_changed = false;
  bool was_selected = false;
  bool is_selected = false;
};

/// How a cell of a list view is to be drawn.
enum class TextRole : std::uint8_t {
  kNormal,
  /// Light grey (red, green and blue each 192 on a light ground).
  kMuted,
};

/// What drives a dialog: it is told of everything that happens to it, on the thread of the user
/// interface, and never after `OnDestroy`. Nothing that it is told may end in an exception.
class IDialogController {
 public:
  virtual ~IDialogController() = default;

  /// The dialog stands with all its controls as the template has them and is not shown yet. It
  /// lives until `OnDestroy`. The result is the message's result: 0, or the code of what failed.
  virtual std::int32_t OnInitDialog(IDialog& dialog) = 0;

  /// A control reports something. The result is the message's result.
  virtual std::int32_t OnCommand(ControlId id, ControlNotification notification) = 0;

  virtual void OnListViewItemChanged(ControlId /*id*/, const ListViewItemChange& /*change*/) {}
  /// A double click on a row; clicks outside any row are not reported.
  virtual void OnListViewDoubleClick(ControlId /*id*/, RowIndex /*row*/) {}
  /// Asked each time a cell is drawn.
  [[nodiscard]] virtual TextRole ListViewTextRole(ControlId /*id*/, RowIndex /*row*/,
                                                  std::size_t /*column*/) const {
    return TextRole::kNormal;
  }

  /// A property sheet or wizard asks; the answer is the notification's own. Modal dialogs get none.
  virtual std::int32_t OnPageNotification(PageNotification /*notification*/) { return 0; }

  /// The dialog is about to go; it must not be used any more.
  virtual void OnDestroy() = 0;
};

}  // namespace pelora
