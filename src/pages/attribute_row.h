// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "directory/attribute_catalogue.h"
#include "pages/choose_name.h"
#include "platform/field_rows.h"

namespace pelora {

/// The row of a field that is one control for one attribute: a check box for a flag, an edit
/// control for a number or a text or, with a chooser, for a name.
[[nodiscard]] FieldRow AttributeRow(const Attribute& attribute, ControlId control, ControlId label,
                                    const ChooseButton& choose = {});

}  // namespace pelora
