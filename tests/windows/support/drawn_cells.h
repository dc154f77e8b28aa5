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

/// Has a list view drawn anew and gives the brightness (0 to 255) of the darkest spot in a cell:
/// that of its text, on a light ground.
[[nodiscard]] int DrawnTextBrightness(HWND view, std::size_t row, std::size_t column);

}  // namespace pelora::windows::test
