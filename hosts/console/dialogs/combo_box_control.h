// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QComboBox>
#include <optional>

#include "hosts/console/dialogs/dialog_control.h"
#include "hosts/console/text/collation.h"

namespace pelora::console {

/// A drop-down list that heeds the wheel only while it has the focus, so that scrolling past it
/// changes nothing.
class DropDownList final : public QComboBox {
 public:
  explicit DropDownList(QWidget* parent);

 protected:
  void wheelEvent(QWheelEvent* event) override;
  /// What it says while nothing is chosen ends in dots where there is no room for it.
  void paintEvent(QPaintEvent* event) override;
};

class ComboBoxControl final : public DialogControl, private IComboBox {
 public:
  ComboBoxControl(const resources::DialogItem& item, QWidget& parent, ControlEvents& events);

  [[nodiscard]] IComboBox* ComboBox() override { return this; }
  [[nodiscard]] QSize NeededSize() const override;
  [[nodiscard]] Stretching stretching() const override { return {.across = Growth::kGrows}; }
  /// The selected row's text, as the platform has it for a list without an edit field.
  [[nodiscard]] std::string Text() const override;

 private:
  void Add(std::string_view text) override;
  void Clear() override;
  [[nodiscard]] RowIndex Count() const override;
  [[nodiscard]] std::string Text(RowIndex row) const override;
  [[nodiscard]] std::optional<RowIndex> Selection() const override;
  void Select(std::optional<RowIndex> row) override;

  DropDownList& list_;
  std::optional<Collation> order_;
  bool changing_ = false;
};

}  // namespace pelora::console
