// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/windows/system_headers.h"
#include "platform/choosers.h"

namespace pelora::windows {

/// The window of a chooser's owner; the dialog's own for a control that the dialog lacks.
[[nodiscard]] HWND WindowOf(ChooserOwner owner);

}  // namespace pelora::windows
