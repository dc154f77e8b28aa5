// SPDX-License-Identifier: Apache-2.0
#include "pages/attribute_row.h"

namespace pelora {
namespace {

FieldKind KindOf(const Attribute& attribute, const ChooseButton& choose) {
  if (choose.chooser != nullptr) return choose.chooser->kind;
  switch (attribute.encoding) {
    case Encoding::kFlag:
      return FieldKind::kFlag;
    case Encoding::kInteger:
      return FieldKind::kNumber;
    default:
      return FieldKind::kText;
  }
}

}  // namespace

FieldRow AttributeRow(const Attribute& attribute, ControlId control, ControlId label,
                      const ChooseButton& choose) {
  return {.name = std::string(attribute.name),
          .kind = KindOf(attribute, choose),
          .control = control,
          .label = label,
          .attributes = {attribute.name},
          .is_read_only = attribute.multi_selection == MultiSelectionRule::kNeverWritten,
          .choose = choose.button};
}

}  // namespace pelora
