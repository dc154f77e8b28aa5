// SPDX-License-Identifier: Apache-2.0
#include "hosts/headless/headless_control.h"

#include <utility>

namespace pelora {
namespace {

using resources::ControlKind;

constexpr std::uint32_t kDisabledBit = 0x08000000;
constexpr std::uint32_t kVisibleBit = 0x10000000;

constexpr std::uint32_t kButtonTypeMask = 0xF;
constexpr std::uint32_t kPushButton = 0;
constexpr std::uint32_t kDefaultPushButton = 1;
constexpr std::uint32_t kCheckBox = 2;
constexpr std::uint32_t kThreeState = 5;

constexpr std::uint32_t kReadOnlyBit = 0x800;
constexpr std::uint32_t kNumberBit = 0x2000;
constexpr std::uint32_t kSortBit = 2;

std::uint32_t ButtonType(const resources::DialogItem& item) { return item.style & kButtonTypeMask; }

}  // namespace

HeadlessControl::HeadlessControl(const resources::DialogItem& described,
                                 HeadlessListView::ChangeListener listener)
    : item(described),
      text(described.title),
      enabled((described.style & kDisabledBit) == 0),
      shown((described.style & kVisibleBit) != 0) {
  switch (item.kind) {
    case ControlKind::kButton:
      if (ButtonType(item) == static_cast<std::uint32_t>(ButtonStyle::kAutoCheckBox)) {
        style = ButtonStyle::kAutoCheckBox;
      } else if (ButtonType(item) == static_cast<std::uint32_t>(ButtonStyle::kAutoThreeState)) {
        style = ButtonStyle::kAutoThreeState;
      }
      break;
    case ControlKind::kListBox:
      list_box = std::make_unique<HeadlessListBox>((item.style & kSortBit) != 0);
      break;
    case ControlKind::kComboBox:
      combo_box = std::make_unique<HeadlessComboBox>();
      break;
    case ControlKind::kListView:
      list_view = std::make_unique<HeadlessListView>(std::move(listener));
      break;
    case ControlKind::kEdit:
    case ControlKind::kStatic:
    case ControlKind::kScrollBar:
    case ControlKind::kOther:
      break;
  }
}

bool HeadlessControl::IsCheckBox() const {
  if (item.kind != ControlKind::kButton) return false;
  return style.has_value() || ButtonType(item) == kCheckBox || ButtonType(item) == kThreeState;
}

bool HeadlessControl::IsPushButton() const {
  if (item.kind != ControlKind::kButton) return false;
  return ButtonType(item) == kPushButton || ButtonType(item) == kDefaultPushButton;
}

bool HeadlessControl::IsDefaultButton() const {
  return item.kind == ControlKind::kButton && ButtonType(item) == kDefaultPushButton;
}

bool HeadlessControl::IsReadOnly() const { return IsEdit() && (item.style & kReadOnlyBit) != 0; }

bool HeadlessControl::TakesDigitsOnly() const { return IsEdit() && (item.style & kNumberBit) != 0; }

bool HeadlessControl::HasText() const {
  return item.kind == ControlKind::kEdit || item.kind == ControlKind::kStatic ||
         item.kind == ControlKind::kButton;
}

void HeadlessControl::CycleCheck() {
  if (style == ButtonStyle::kAutoCheckBox) {
    check = check == CheckState::kChecked ? CheckState::kUnchecked : CheckState::kChecked;
  } else if (style == ButtonStyle::kAutoThreeState) {
    constexpr std::uint32_t kStates = 3;
    check = static_cast<CheckState>((static_cast<std::uint32_t>(check) + 1) % kStates);
  }
}

}  // namespace pelora
