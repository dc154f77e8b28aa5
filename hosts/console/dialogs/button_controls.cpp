// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/dialogs/button_controls.h"

#include <QStyle>

#include "hosts/console/dialogs/control_styles.h"
#include "hosts/console/text/qt_text.h"

namespace pelora::console {
namespace {

Qt::CheckState ToQt(CheckState state) {
  switch (state) {
    case CheckState::kChecked:
      return Qt::Checked;
    case CheckState::kIndeterminate:
      return Qt::PartiallyChecked;
    case CheckState::kUnchecked:
      break;
  }
  return Qt::Unchecked;
}

CheckState FromQt(Qt::CheckState state) {
  switch (state) {
    case Qt::Checked:
      return CheckState::kChecked;
    case Qt::PartiallyChecked:
      return CheckState::kIndeterminate;
    case Qt::Unchecked:
      break;
  }
  return CheckState::kUnchecked;
}

ButtonStyle StyleOf(const resources::DialogItem& item) {
  return (item.style & style::kButtonTypeMask) == style::kAutoThreeState
             ? ButtonStyle::kAutoThreeState
             : ButtonStyle::kAutoCheckBox;
}

}  // namespace

PushButtonControl::PushButtonControl(const resources::DialogItem& item, QWidget& parent,
                                     ControlEvents& events)
    : DialogControl(item, *new QPushButton(ToQString(item.title), &parent), events),
      button_(static_cast<QPushButton&>(widget())),
      text_(item.title) {
  button_.setDefault((item.style & style::kButtonTypeMask) == style::kDefaultPushButton);
  QObject::connect(&button_, &QPushButton::clicked, &button_,
                   [this] { Notify(ControlNotification::kClicked); });
}

QString PushButtonControl::Caption() const {
  const bool has_key =
      id() == static_cast<ControlId>(kDialogOk) || id() == static_cast<ControlId>(kDialogCancel);
  return has_key ? QString() : ToQString(text_);
}

void PushButtonControl::SetText(std::string_view text) {
  text_ = text;
  button_.setText(ToQString(text));
}

QSize PushButtonControl::NeededSize() const {
  // The style's own size hint asks for a comfortable width; here only the text has to fit.
  const int margin = 2 * button_.style()->pixelMetric(QStyle::PM_ButtonMargin, nullptr, &button_);
  const QSize text = button_.fontMetrics().size(Qt::TextShowMnemonic, button_.text());
  return text + QSize(margin, margin / 2);
}

AutoCheckBox::AutoCheckBox(ButtonStyle style, QWidget* parent) : QCheckBox(parent), style_(style) {
  // Always able to show the third state; which states a click gives is decided in nextCheckState.
  setTristate(true);
}

void AutoCheckBox::SetStyleKind(ButtonStyle style) {
  style_ = style;
  update();
}

void AutoCheckBox::nextCheckState() {
  if (undecided_order_) {
    const bool is_checked = checkState() == Qt::Checked;
    const bool is_undecided = checkState() == Qt::PartiallyChecked;
    return setCheckState(is_undecided ? Qt::Checked
                                      : (is_checked ? Qt::Unchecked : Qt::PartiallyChecked));
  }
  const bool has_third = style_ == ButtonStyle::kAutoThreeState;
  switch (checkState()) {
    case Qt::Unchecked:
      return setCheckState(Qt::Checked);
    case Qt::Checked:
      return setCheckState(has_third ? Qt::PartiallyChecked : Qt::Unchecked);
    case Qt::PartiallyChecked:
      return setCheckState(has_third ? Qt::Unchecked : Qt::Checked);
  }
}

CheckBoxControl::CheckBoxControl(const resources::DialogItem& item, QWidget& parent,
                                 ControlEvents& events)
    : DialogControl(item, *new AutoCheckBox(StyleOf(item), &parent), events),
      box_(static_cast<AutoCheckBox&>(widget())),
      text_(item.title) {
  box_.setText(ToQString(item.title));
  QObject::connect(&box_, &QCheckBox::clicked, &box_,
                   [this] { Notify(ControlNotification::kClicked); });
}

QString CheckBoxControl::Caption() const { return ToQString(text_); }

void CheckBoxControl::SetText(std::string_view text) {
  text_ = text;
  box_.setText(ToQString(text));
}

CheckState CheckBoxControl::Check() const { return FromQt(box_.checkState()); }

void CheckBoxControl::SetCheck(CheckState state) {
  const bool two_states = box_.style_kind() == ButtonStyle::kAutoCheckBox;
  if (two_states && state == CheckState::kIndeterminate) state = CheckState::kChecked;
  box_.setCheckState(ToQt(state));
}

}  // namespace pelora::console
