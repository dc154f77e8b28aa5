// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/text/csv_reader.h"

#include <algorithm>

#include "hosts/ctl/text/byte_order_mark.h"
#include "hosts/session/utf8_check.h"

namespace pelora::ctl {
namespace {

constexpr char kQuote = '"';
constexpr std::string_view kEndless =
    "the row is longer than 16 MB: a closing quotation mark may be missing";

}  // namespace

CsvReader::CsvReader(std::string_view text, char separator)
    : text_(WithoutByteOrderMark(text)),
      separator_(separator),
      skipped_(text.size() - text_.size()) {}

char CsvReader::SeparatorOf(std::string_view text) {
  text = WithoutByteOrderMark(text);
  text.remove_prefix(std::min(text.find_first_not_of("\r\n"), text.size()));
  bool is_quoted = false;
  bool has_semicolon = false;
  for (const char character : text) {
    if (character == kQuote) is_quoted = !is_quoted;
    if (is_quoted) continue;
    if (character == '\n') break;
    if (character == ',') return ',';
    has_semicolon = has_semicolon || character == ';';
  }
  return has_semicolon ? ';' : ',';
}

bool CsvReader::Next(std::vector<std::string>& cells) {
  cells.clear();
  if (fault_ || !SkipEmptyLines()) return false;
  row_line_ = line_;
  row_begin_ = place_;
  while (true) {
    if (!ReadCell(cells.emplace_back())) return false;
    if (AtEnd()) return true;
    if (text_[place_] != separator_) break;
    ++place_;
  }
  TakeLineEnd();
  return true;
}

bool CsvReader::SkipEmptyLines() {
  while (!AtEnd() && AtLineEnd()) TakeLineEnd();
  return !AtEnd();
}

bool CsvReader::ReadCell(std::string& cell) {
  if (!AtEnd() && text_[place_] == kQuote) return ReadQuoted(cell);
  const std::size_t begin = place_;
  while (!AtEnd() && text_[place_] != separator_ && !AtLineEnd()) {
    const char character = text_[place_];
    if (IsEndless()) return Fail(row_line_, kEndless);
    if (character == kQuote) {
      return Fail(line_, "a quotation mark inside a cell that does not begin with one");
    }
    if (character == '\0') return Fail(line_, "a zero byte");
    if (character == '\r') return Fail(line_, "a carriage return without a line feed");
    ++place_;
  }
  cell = text_.substr(begin, place_ - begin);
  if (session::FirstInvalidByte(cell)) return Fail(line_, "this is not UTF-8");
  return true;
}

bool CsvReader::ReadQuoted(std::string& cell) {
  const std::size_t first_line = line_;
  ++place_;
  while (true) {
    TakePlain(cell);
    if (AtEnd()) return Fail(first_line, "the closing quotation mark is missing");
    const char character = text_[place_++];
    if (IsEndless()) return Fail(row_line_, kEndless);
    if (character == '\0') return Fail(line_, "a zero byte");
    if (character == '\n') ++line_;
    if (character == kQuote) {
      if (AtEnd() || text_[place_] != kQuote) break;
      ++place_;
    }
    cell += character;
  }
  if (const auto invalid = session::FirstInvalidByte(cell); invalid) {
    const auto before = std::string_view(cell).substr(0, *invalid);
    const auto breaks = static_cast<std::size_t>(std::ranges::count(before, '\n'));
    return Fail(first_line + breaks, "this is not UTF-8");
  }
  if (AtEnd() || text_[place_] == separator_ || AtLineEnd()) return true;
  return Fail(line_, "something stands behind the closing quotation mark");
}

void CsvReader::TakePlain(std::string& cell) {
  const std::size_t begin = place_;
  const std::size_t most = row_begin_ + kMostOfRow;
  const auto is_plain = [](char character) {
    return character != kQuote && character != '\n' && character != '\0';
  };
  while (!AtEnd() && place_ < most && is_plain(text_[place_])) ++place_;
  cell.append(text_.substr(begin, place_ - begin));
}

bool CsvReader::Fail(std::size_t line, std::string_view text) {
  fault_ = CsvFault{.line = line, .text = std::string(text)};
  return false;
}

bool CsvReader::AtLineEnd() const {
  return text_.substr(place_).starts_with('\n') || text_.substr(place_).starts_with("\r\n");
}

void CsvReader::TakeLineEnd() {
  if (text_[place_] == '\r') ++place_;
  ++place_;
  ++line_;
}

}  // namespace pelora::ctl
