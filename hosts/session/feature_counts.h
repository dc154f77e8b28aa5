// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>

#include "hosts/session/page_fields.h"

namespace pelora::session {

/// Whether a field is a feature that can be switched on and off: one row of a list view, with a
/// button for either.
[[nodiscard]] bool IsSwitch(const FieldRow& row);

/// As they were gathered last: see `GatherValues`.
[[nodiscard]] FeatureCounts CountsOf(const PageFields& fields, std::size_t field);
/// Counts one object more.
void CountSwitch(const PageFields& fields, std::size_t field, const DirectoryObject& object,
                 FeatureCounts& counts);

/// "3 on, 1 off, 2 unset"; what nobody has is left out.
[[nodiscard]] std::string CountsText(const FeatureCounts& counts);

/// A button of a page has been pressed, and the page is about to hear of it. If it switches
/// features and several objects are selected, the selected rows are switched for all of them,
/// whatever they say in sum: the page, which takes a choice of what it says already for none, is
/// told of the opposite first.
void SwitchForAll(PageFields& fields, ControlId button);

}  // namespace pelora::session
