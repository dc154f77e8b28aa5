// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/fields/csv_writer.h"

#include <string_view>

namespace pelora::session {
namespace {

void AppendCell(std::string& row, std::string_view cell) {
  constexpr std::string_view kSpecial = ",;\"\r\n";
  if (cell.find_first_of(kSpecial) == std::string_view::npos) {
    row += cell;
    return;
  }
  row += '"';
  for (const char character : cell) {
    if (character == '"') row += '"';
    row += character;
  }
  row += '"';
}

}  // namespace

std::string CsvRow(std::span<const std::string> cells) {
  std::string row;
  for (std::size_t index = 0; index < cells.size(); ++index) {
    if (index > 0) row += ',';
    AppendCell(row, cells[index]);
  }
  // A row of one empty cell would be read as no row.
  if (row.empty()) row = "\"\"";
  return row + "\r\n";
}

}  // namespace pelora::session
