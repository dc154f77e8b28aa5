// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

#include "hosts/windows/system_headers.h"

namespace pelora::windows::test {

/// Runs a property sheet or wizard as a console does that waits for it. `play` is called once, from
/// within the sheet's own message loop, with the sheet's window, and has to see to it that the
/// sheet ends. The answer is that of the system's function.
[[nodiscard]] INT_PTR RunModalSheet(const PROPSHEETHEADERW& header,
                                    const std::function<void(HWND sheet)>& play);

}  // namespace pelora::windows::test
