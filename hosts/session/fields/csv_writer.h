// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>

namespace pelora::session {

/// One row of a table in the format of RFC 4180, its line end included. Cells that need it stand in
/// quotation marks, as do those with a `;`, which divides cells in some programs.
[[nodiscard]] std::string CsvRow(std::span<const std::string> cells);

}  // namespace pelora::session
