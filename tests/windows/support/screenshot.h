// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "hosts/windows/system_headers.h"

namespace pelora::windows::test {

/// Saves what the screen shows of a window as screenshots/NAME.png in the build folder. A picture
/// in one colour below the caption fails the test: nothing was drawn.
void SavePicture(HWND window, const std::string& name);

}  // namespace pelora::windows::test
