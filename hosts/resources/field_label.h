// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "hosts/resources/dialog_template.h"
#include "platform/field_rows.h"

namespace pelora::resources {

/// What a person calls a field of the page that is made from `dialog`: the text of its label, of
/// the control itself or of what stands before it, as `FieldRow` says, without the mark of a
/// mnemonic and the colon behind it. Empty when the template says nothing of the kind.
[[nodiscard]] std::string FieldLabel(const FieldRow& row, const DialogTemplate& dialog);

}  // namespace pelora::resources
