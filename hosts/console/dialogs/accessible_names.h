// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

#include "hosts/resources/dialog_template.h"

namespace pelora::console {

/// What a screen reader calls each control of a dialog, in the template's order.
///
/// A button or check box is called by its own text; any other control by the label that stands
/// right before it in the template, else by the group box around it; a few that templates leave
/// without any are called by a name of the console's own. Where several controls of the dialog
/// would be called the same, each takes its group's name in front ("Send as: Add"). Labels have no
/// name of their own here: the text they show is their name.
[[nodiscard]] QStringList AccessibleNames(const resources::DialogTemplate& dialog);

/// The row of the label that names the control in row `item`, or -1.
[[nodiscard]] int LabelOf(const resources::DialogTemplate& dialog, int item);

}  // namespace pelora::console
