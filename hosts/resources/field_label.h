// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "hosts/resources/dialog_template.h"
#include "platform/field_rows.h"

namespace pelora::resources {

/// What a person calls a field of the page that is made from `dialog`: the text of its label, of
/// the control itself or of what stands before it, as `FieldRow` says, as a plain label. Empty when
/// the template says nothing of the kind.
[[nodiscard]] std::string FieldLabel(const FieldRow& row, const DialogTemplate& dialog);

/// A label's text without the mark of a mnemonic and the colon behind it.
[[nodiscard]] std::string PlainLabel(std::string_view text);

}  // namespace pelora::resources
