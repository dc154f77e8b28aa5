// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/dialogs/control_factory.h"

#include <algorithm>
#include <array>

#include "hosts/console/dialogs/button_controls.h"
#include "hosts/console/dialogs/combo_box_control.h"
#include "hosts/console/dialogs/control_styles.h"
#include "hosts/console/dialogs/edit_control.h"
#include "hosts/console/dialogs/list_box_control.h"
#include "hosts/console/dialogs/list_view_control.h"
#include "hosts/console/dialogs/multi_line_edit_control.h"
#include "hosts/console/dialogs/static_controls.h"

namespace pelora::console {
namespace {

using resources::ControlKind;
using resources::DialogItem;

using Maker = std::unique_ptr<DialogControl> (*)(const DialogItem&, QWidget&, ControlEvents&);

template <class Control>
std::unique_ptr<DialogControl> Make(const DialogItem& item, QWidget& parent,
                                    ControlEvents& events) {
  return std::make_unique<Control>(item, parent, events);
}

/// A kind of control, told by its class and the bits of its style that choose a type.
struct ControlType {
  ControlKind kind;
  std::uint32_t type_mask;
  std::uint32_t type;
  Maker make;
};

// The first row that fits decides.
constexpr std::array kControlTypes = {
    ControlType{ControlKind::kButton, style::kButtonTypeMask, style::kAutoCheckBox,
                Make<CheckBoxControl>},
    ControlType{ControlKind::kButton, style::kButtonTypeMask, style::kAutoThreeState,
                Make<CheckBoxControl>},
    ControlType{ControlKind::kButton, style::kButtonTypeMask, style::kGroupBox, Make<GroupControl>},
    ControlType{ControlKind::kButton, 0, 0, Make<PushButtonControl>},
    ControlType{ControlKind::kEdit, style::kEditMultiLine, style::kEditMultiLine,
                Make<MultiLineEditControl>},
    ControlType{ControlKind::kEdit, 0, 0, Make<EditControl>},
    ControlType{ControlKind::kStatic, style::kStaticTypeMask, style::kStaticHorizontalLine,
                Make<RuleControl>},
    ControlType{ControlKind::kStatic, style::kStaticTypeMask, style::kStaticIcon,
                Make<IconControl>},
    ControlType{ControlKind::kStatic, 0, 0, Make<LabelControl>},
    ControlType{ControlKind::kListBox, 0, 0, Make<ListBoxControl>},
    ControlType{ControlKind::kComboBox, 0, 0, Make<ComboBoxControl>},
    ControlType{ControlKind::kListView, 0, 0, Make<ListViewControl>},
};

}  // namespace

std::unique_ptr<DialogControl> MakeControl(const DialogItem& item, QWidget& parent,
                                           ControlEvents& events) {
  const auto* found = std::ranges::find_if(kControlTypes, [&item](const ControlType& row) {
    return row.kind == item.kind && (item.style & row.type_mask) == row.type;
  });
  const Maker make = found == kControlTypes.end() ? Make<RuleControl> : found->make;
  return make(item, parent, events);
}

}  // namespace pelora::console
