// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "hosts/windows/system_headers.h"

namespace pelora::windows::test {

/// The controls of a dialog as a person sees them: one line each, in tab order, for a test to
/// compare with what ought to stand there.
///
///     - frame "Quota"
///     202 check box "Use user &quota" checked
///     203 edit "100"
///     242 edit "node1" read-only
///     284 drop-down list *"active user" "shared store only"
///     206 list box "a@example.test" *"b@example.test"
///     249 list view Feature|State *imap|enabled pop3|disabled
///     207 button "&Add"
///     209 button "&Modify" disabled
///     - icon
///     - rule
///
/// The number is the control's; "-" for one that nobody asks for. A star marks selected rows. Words
/// at the end say what is out of the ordinary: three-state, read-only, disabled, hidden.
[[nodiscard]] std::vector<std::string> ControlLines(HWND dialog);

}  // namespace pelora::windows::test
