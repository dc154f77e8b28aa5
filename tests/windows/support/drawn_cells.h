// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>

#include "hosts/windows/system_headers.h"

namespace pelora::windows::test {

/// Has a list view of a dialog drawn anew and looks on: the text colour that the dialog gave to a
/// cell. Nothing when the cell was not drawn, or drawn without asking.
[[nodiscard]] std::optional<COLORREF> DrawnTextColor(HWND dialog, HWND view, std::size_t row,
                                                     std::size_t column);

}  // namespace pelora::windows::test
