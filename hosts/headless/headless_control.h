// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

#include "hosts/headless/headless_combo_box.h"
#include "hosts/headless/headless_list_box.h"
#include "hosts/headless/headless_list_view.h"
#include "hosts/resources/dialog_template.h"
#include "platform/dialog.h"

namespace pelora {

/// One control of a dialog in memory: what the template says of it and what became of it since.
struct HeadlessControl {
  /// `listener` hears of a list view's changes.
  HeadlessControl(const resources::DialogItem& described,
                  HeadlessListView::ChangeListener listener);

  /// Whether it is a box that `Check`, `SetCheck` and `SetStyle` are about.
  [[nodiscard]] bool IsCheckBox() const;
  [[nodiscard]] bool IsPushButton() const;
  [[nodiscard]] bool IsDefaultButton() const;
  [[nodiscard]] bool IsEdit() const { return item.kind == resources::ControlKind::kEdit; }
  /// Edit controls only.
  [[nodiscard]] bool IsReadOnly() const;
  [[nodiscard]] bool TakesDigitsOnly() const;
  /// Whether it has a text that a program reads and sets: an edit control's, a caption, a label.
  [[nodiscard]] bool HasText() const;

  /// A click's effect on a box that cycles through its states by itself; others stay as they are.
  void CycleCheck();

  resources::DialogItem item;
  std::string text;
  bool enabled = true;
  bool shown = true;
  CheckState check = CheckState::kUnchecked;
  /// What a box does when it is clicked. A box that is not automatic has none, until it is given
  /// one.
  std::optional<ButtonStyle> style;
  /// At most one of these, by the control's kind.
  std::unique_ptr<HeadlessListBox> list_box;
  std::unique_ptr<HeadlessComboBox> combo_box;
  std::unique_ptr<HeadlessListView> list_view;
};

}  // namespace pelora
