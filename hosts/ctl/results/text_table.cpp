// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/results/text_table.h"

#include <algorithm>
#include <utility>

#include "hosts/session/visible_text.h"

namespace pelora::ctl {

TextTable::TextTable(std::vector<std::string> header) {
  if (!header.empty()) Add(std::move(header));
}

void TextTable::Add(std::vector<std::string> row) {
  if (widths_.size() < row.size()) widths_.resize(row.size());
  for (std::size_t column = 0; column < row.size(); ++column) {
    row[column] = session::VisibleText(row[column]);
    widths_[column] = std::max(widths_[column], columns_.Count(row[column]));
  }
  rows_.push_back(std::move(row));
}

void TextTable::Print(Output& output, const std::string& indent) const {
  constexpr std::size_t kGap = 2;
  for (const std::vector<std::string>& row : rows_) {
    std::string line = indent;
    std::size_t blanks = 0;
    for (std::size_t column = 0; column < row.size(); ++column) {
      // Nothing stands behind the last text of a line.
      if (!row[column].empty()) line += std::string(std::exchange(blanks, 0), ' ') + row[column];
      blanks += widths_[column] - columns_.Count(row[column]) + kGap;
    }
    output.WriteLine(line);
  }
}

}  // namespace pelora::ctl
