// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCheckBox>
#include <QPushButton>

#include "hosts/console/dialogs/dialog_control.h"

namespace pelora::console {

class PushButtonControl final : public DialogControl {
 public:
  PushButtonControl(const resources::DialogItem& item, QWidget& parent, ControlEvents& events);

  /// None for OK and Cancel, which have keys of their own.
  [[nodiscard]] QString Caption() const override;
  void ShowCaption(const QString& marked) override { button_.setText(marked); }
  [[nodiscard]] std::string Text() const override { return text_; }
  void SetText(std::string_view text) override;
  [[nodiscard]] QSize NeededSize() const override;
  void Click() override { button_.click(); }

 private:
  QPushButton& button_;
  std::string text_;
};

/// A check box that changes its state by itself when clicked, in two or three steps as its style
/// says.
class AutoCheckBox final : public QCheckBox {
 public:
  AutoCheckBox(ButtonStyle style, QWidget* parent);

  [[nodiscard]] ButtonStyle style_kind() const { return style_; }
  /// The state stays: a two-state box may show the third state until it is clicked.
  void SetStyleKind(ButtonStyle style);
  /// Whether clicks lead from the third state to checked, unchecked and back to the third, whatever
  /// the style: a box that stands for several objects goes back to leaving each as it is.
  void SetUndecidedOrder(bool undecided) { undecided_order_ = undecided; }

 protected:
  void nextCheckState() override;

 private:
  ButtonStyle style_;
  bool undecided_order_ = false;
};

class CheckBoxControl final : public DialogControl {
 public:
  CheckBoxControl(const resources::DialogItem& item, QWidget& parent, ControlEvents& events);

  [[nodiscard]] QString Caption() const override;
  void ShowCaption(const QString& marked) override { box_.setText(marked); }
  [[nodiscard]] std::string Text() const override { return text_; }
  void SetText(std::string_view text) override;
  [[nodiscard]] CheckState Check() const override;
  void SetCheck(CheckState state) override;
  [[nodiscard]] ButtonStyle Style() const override { return box_.style_kind(); }
  void SetStyle(ButtonStyle style) override { box_.SetStyleKind(style); }
  [[nodiscard]] QSize NeededSize() const override { return box_.sizeHint(); }
  [[nodiscard]] Stretching stretching() const override { return {.across = Growth::kNone}; }
  void Click() override { box_.click(); }

 private:
  AutoCheckBox& box_;
  std::string text_;
};

}  // namespace pelora::console
