// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "hosts/resources/dialog_template.h"
#include "platform/field_rows.h"

namespace pelora::testing {

/// `NAME: KIND "LABEL"`, and the attributes where they are not the name alone.
[[nodiscard]] std::string ToLine(const FieldRow& row, const resources::DialogTemplate& dialog);

/// The row of a name, which is there.
[[nodiscard]] const FieldRow& RowNamed(const std::vector<FieldRow>& rows, std::string_view name);

/// The one control of a number; null when there is none or more than one.
[[nodiscard]] const resources::DialogItem* FindItem(const resources::DialogTemplate& dialog,
                                                    ControlId id);
[[nodiscard]] bool IsPushButton(const resources::DialogItem& item);

/// Expects every control that the rows name in the template, each of its kind, and every field to
/// have a label. `page` is named in what fails.
void ExpectControlsOf(const std::vector<FieldRow>& rows, const resources::DialogTemplate& dialog,
                      std::string_view page);

/// The controls of the template that hold a value and belong to no row.
[[nodiscard]] std::vector<ControlId> ValuesWithoutRow(const std::vector<FieldRow>& rows,
                                                      const resources::DialogTemplate& dialog);

}  // namespace pelora::testing
