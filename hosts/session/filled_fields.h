// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "hosts/resources/dialog_template.h"
#include "platform/dialog.h"
#include "platform/field_rows.h"

namespace pelora::session {

/// What the fields of an open page hold that can be used, a line each: the field's label and its
/// value. Empty ones, boxes that are not checked and lists are left out.
[[nodiscard]] std::vector<std::string> FilledFields(const std::vector<FieldRow>& rows,
                                                    const resources::DialogTemplate& page,
                                                    IDialog& dialog);

/// Whether what stands on a page of a new object is written at all: its own box is checked, or it
/// has none.
[[nodiscard]] bool IsPageWanted(const std::vector<FieldRow>& rows, const IDialog& dialog);

/// What a page waits for that holds up a wizard, as a sentence: what it says of the first field
/// that is needed and empty or, where it says nothing of any, the fields that are empty. Empty when
/// nothing is.
[[nodiscard]] std::string WhatIsMissing(const std::vector<FieldRow>& rows,
                                        const resources::DialogTemplate& page, IDialog& dialog);

}  // namespace pelora::session
