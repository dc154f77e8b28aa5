// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "hosts/windows/system_headers.h"

namespace pelora::windows::test {

/// A window's text in UTF-8.
[[nodiscard]] std::string TextOfWindow(HWND window);

}  // namespace pelora::windows::test
