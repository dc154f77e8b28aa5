// SPDX-License-Identifier: Apache-2.0
// Reads any bytes as a table; what was read is written and read again, and is the same. A table
// without a fault is read the same row by row from where each row begins.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/ctl/fields/fields.h"
#include "hosts/ctl/text/csv_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using pelora::ctl::CsvReader;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const char separator = CsvReader::SeparatorOf(text);
  CsvReader reader(text, separator);
  std::vector<std::vector<std::string>> rows;
  std::string written;
  std::size_t offset = reader.offset();
  for (std::vector<std::string> row; reader.Next(row); offset = reader.offset()) {
    CsvReader again(text.substr(offset), separator);
    std::vector<std::string> same;
    // A byte order mark in the middle is a character of a cell.
    const bool has_mark = text.substr(offset).starts_with("\xEF\xBB\xBF");
    if (!has_mark && (!again.Next(same) || same != row)) std::abort();
    written += pelora::ctl::CsvRow(row);
    rows.push_back(row);
  }
  if (written.starts_with("\xEF\xBB\xBF")) return 0;
  CsvReader back(written);
  std::size_t count = 0;
  for (std::vector<std::string> row; back.Next(row); ++count) {
    if (count == rows.size() || row != rows[count]) std::abort();
  }
  if (back.fault() || count != rows.size()) std::abort();
  return 0;
}
