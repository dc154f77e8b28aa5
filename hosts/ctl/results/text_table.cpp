// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/results/text_table.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>

#include "hosts/session/utf8_check.h"
#include "hosts/session/visible_text.h"

namespace pelora::ctl {
namespace {

struct CodePoints {
  std::uint32_t first;
  std::uint32_t last;
};

/// Characters that stand on the one before them.
constexpr auto kCombining = std::to_array<CodePoints>({
    {0x0300, 0x036F},
    {0x0483, 0x0489},
    {0x0591, 0x05BD},
    {0x064B, 0x065F},
    {0x200B, 0x200D},
    {0x20D0, 0x20FF},
    {0xFE00, 0xFE0F},
    {0xFE20, 0xFE2F},
});

/// Characters of two columns: those of East Asia, and pictures.
constexpr auto kWide = std::to_array<CodePoints>({
    {0x1100, 0x115F},
    {0x2E80, 0x303E},
    {0x3041, 0xA4CF},
    {0xA960, 0xA97F},
    {0xAC00, 0xD7A3},
    {0xF900, 0xFAFF},
    {0xFE30, 0xFE4F},
    {0xFF00, 0xFF60},
    {0xFFE0, 0xFFE6},
    {0x1F300, 0x1F64F},
    {0x1F680, 0x1F6FF},
    {0x1F900, 0x1F9FF},
    {0x20000, 0x3FFFD},
});

bool IsAmong(std::span<const CodePoints> ranges, std::uint32_t code) {
  return std::ranges::any_of(ranges, [code](const CodePoints& range) {
    return range.first <= code && code <= range.last;
  });
}

std::size_t ColumnsOf(std::uint32_t code) {
  if (code < kCombining.front().first) return 1;
  if (IsAmong(kCombining, code)) return 0;
  return IsAmong(kWide, code) ? 2 : 1;
}

/// How many columns of a terminal a text takes, which is UTF-8.
std::size_t ColumnCount(std::string_view text) {
  std::size_t columns = 0;
  while (!text.empty()) {
    const std::size_t length = std::max<std::size_t>(session::CharacterLength(text), 1);
    columns += ColumnsOf(session::CodePointOf(text.substr(0, length)));
    text.remove_prefix(length);
  }
  return columns;
}

}  // namespace

TextTable::TextTable(std::vector<std::string> header) {
  if (!header.empty()) Add(std::move(header));
}

void TextTable::Add(std::vector<std::string> row) {
  if (widths_.size() < row.size()) widths_.resize(row.size());
  for (std::size_t column = 0; column < row.size(); ++column) {
    row[column] = session::VisibleText(row[column]);
    widths_[column] = std::max(widths_[column], ColumnCount(row[column]));
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
      blanks += widths_[column] - ColumnCount(row[column]) + kGap;
    }
    output.WriteLine(line);
  }
}

}  // namespace pelora::ctl
