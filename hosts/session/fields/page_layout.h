// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "hosts/resources/dialog_template.h"
#include "platform/field_rows.h"

namespace pelora::session {

/// Where a field stands on its page, and how the page names it: what a person sees, as text.
struct FieldPlace {
  /// Text of the box around the field; empty without one.
  std::string group;
  std::string label;
  /// From the top, then from the left: of the box, then of the control.
  struct Position {
    int y = 0;
    int x = 0;
    auto operator<=>(const Position&) const = default;
  };
  Position group_position;
  Position position;
};

/// Finds a field on its page. False when the page does not have its control.
[[nodiscard]] bool FindPlace(const resources::DialogTemplate& page, const FieldRow& row,
                             FieldPlace& place);

}  // namespace pelora::session
