// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <span>

#include "hosts/console/dialogs/dialog_control.h"
#include "hosts/console/dialogs/dialog_units.h"

namespace pelora::console {

/// A dialog's controls, in the order of its template's items.
using DialogControls = std::vector<std::unique_ptr<DialogControl>>;

/// The units in which `controls` are to be placed: those of `font`, widened where a control's own
/// text or frame would otherwise be cut off. Fonts and styles differ in their proportions; the
/// template's layout stays what it is, everything grows alike, by half at most.
[[nodiscard]] DialogUnits FittingUnits(const resources::DialogTemplate& dialog,
                                       const DialogControls& controls, const QFont& font);

/// Puts every control in its place, group boxes behind the others, larger ones behind smaller.
void PlaceControls(const resources::DialogTemplate& dialog, const DialogControls& controls,
                   const DialogUnits& units);

/// Joins labels with what they name and gives every control its accessible name.
void ConnectControls(const resources::DialogTemplate& dialog, const DialogControls& controls);

}  // namespace pelora::console
