// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFrame>
#include <QGroupBox>
#include <QLabel>

#include "hosts/console/dialogs/dialog_control.h"

namespace pelora::console {

/// A frame around other controls. It stands behind them and does not own them, so that hiding or
/// disabling it leaves them alone. Its mnemonic moves the focus to `SetNext`'s widget.
///
/// The title stands in the frame's upper line, as templates expect it: many a style draws it above
/// the frame, where the frame would run through the controls.
class GroupFrame final : public QGroupBox {
 public:
  using QGroupBox::QGroupBox;
  void SetNext(QWidget* next) { next_ = next; }
  [[nodiscard]] const QWidget* next() const { return next_; }

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QWidget* next_ = nullptr;
};

class GroupControl final : public DialogControl {
 public:
  GroupControl(const resources::DialogItem& item, QWidget& parent, ControlEvents& events);

  /// None where what is in it has a name of its own.
  [[nodiscard]] QString Caption() const override;
  void ShowCaption(const QString& marked) override { frame_.setTitle(marked); }
  [[nodiscard]] std::string Text() const override { return text_; }
  void SetText(std::string_view text) override;
  void SetNext(QWidget& next) { frame_.SetNext(&next); }
  [[nodiscard]] Stretching stretching() const override { return {.is_frame = true}; }

 private:
  GroupFrame& frame_;
  std::string text_;
};

/// A text whose mnemonic, when it has one, moves the focus to `SetBuddy`'s widget. Where there is
/// not enough room for it, it ends in dots if the template says so.
class LabelControl final : public DialogControl {
 public:
  LabelControl(const resources::DialogItem& item, QWidget& parent, ControlEvents& events);

  /// None where it names nothing.
  [[nodiscard]] QString Caption() const override;
  void ShowCaption(const QString& marked) override { label_.setText(marked); }
  [[nodiscard]] std::string Text() const override { return text_; }
  void SetText(std::string_view text) override;
  void SetBuddy(QWidget& buddy);
  [[nodiscard]] QSize NeededSize() const override;
  [[nodiscard]] Stretching stretching() const override {
    return {.across = fits_any_width_ ? Growth::kGrows : Growth::kNone};
  }

 private:
  void Show();

  QLabel& label_;
  std::string text_;
  bool has_mnemonics_;
  bool fits_any_width_;
};

/// A picture of the module's own resources, at the size that its place has.
class IconControl final : public DialogControl {
 public:
  IconControl(const resources::DialogItem& item, QWidget& parent, ControlEvents& events);
};

/// A horizontal rule, or whatever else has no contents.
class RuleControl final : public DialogControl {
 public:
  RuleControl(const resources::DialogItem& item, QWidget& parent, ControlEvents& events);

  [[nodiscard]] Stretching stretching() const override { return {.across = Growth::kGrows}; }
};

}  // namespace pelora::console
