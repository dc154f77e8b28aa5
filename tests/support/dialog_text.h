// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "hosts/resources/dialog_template.h"

namespace pelora::testing {

/// A dialog template as text, to be compared: a line for the dialog and one for each control, in
/// tab order, with number, kind, everything in its style that is not usual for its kind, and text.
/// Places and sizes of controls are left out. Bits without a name stand as numbers, so that none
/// goes unseen.
///
///   page "Pelora", 271 x 228, 8 "MS Shell Dlg"
///   group box "Other"
///   214 check box "Pelora Account"
///   298 edit, digits only
///   209 button, disabled "&Modify"
[[nodiscard]] std::string ToText(const resources::DialogTemplate& dialog);

}  // namespace pelora::testing
