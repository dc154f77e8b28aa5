// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "hosts/console/dialogs/dialog_control.h"

namespace pelora::console {

/// Makes the native widget for an item of a dialog template, as a child of `parent`, without a
/// place yet. `events` outlives the widget.
[[nodiscard]] std::unique_ptr<DialogControl> MakeControl(const resources::DialogItem& item,
                                                         QWidget& parent, ControlEvents& events);

}  // namespace pelora::console
