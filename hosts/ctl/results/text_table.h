// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "hosts/ctl/results/output.h"
#include "hosts/ctl/results/terminal_columns.h"

namespace pelora::ctl {

/// A table for a person: columns as wide as what stands in them, two blanks between them. Control
/// characters are shown, wherever it is printed.
class TextTable {
 public:
  /// Without a header when it is empty.
  explicit TextTable(std::vector<std::string> header);

  void Add(std::vector<std::string> row);
  [[nodiscard]] bool IsEmpty() const { return rows_.empty(); }
  void Print(Output& output, const std::string& indent = {}) const;

 private:
  TerminalColumns columns_;
  std::vector<std::vector<std::string>> rows_;
  std::vector<std::size_t> widths_;
};

}  // namespace pelora::ctl
