// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "hosts/windows/system_headers.h"

namespace pelora::windows::test {

/// Controls of a dialog that do not show whole, each with the reason in words: one that reaches
/// over the dialog's edge, a text that is wider or higher than its control, two fields that
/// overlap.
[[nodiscard]] std::vector<std::string> ClippedControls(HWND dialog);

}  // namespace pelora::windows::test
