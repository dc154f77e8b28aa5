// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pelora::ctl {

/// What is wrong with a table, and on which of its lines (from 1).
struct CsvFault {
  std::size_t line = 0;
  std::string text;
};

/// Reads a table in the format of RFC 4180, row by row: cells divided by one character, rows by
/// line feeds with or without a carriage return; a cell in quotation marks may hold any of these,
/// and quotation marks doubled. Lines without any character are passed over, as is a byte order
/// mark at the beginning.
///
/// A fault ends the reading: bytes that are no UTF-8, a zero, a carriage return on its own outside
/// of quotation marks, a quotation mark inside a cell that does not begin with one, something
/// behind the closing mark, no closing mark, or a row of more than `kMostOfRow` bytes.
class CsvReader {
 public:
  /// A row that is longer has lost its end.
  static constexpr std::size_t kMostOfRow = std::size_t{16} << 20;

  /// `text` outlives the reader.
  explicit CsvReader(std::string_view text, char separator = ',');

  /// The separator that a table's header calls for: `,`, or `;` when the first line that is not
  /// empty has one outside of quotation marks and no `,`.
  [[nodiscard]] static char SeparatorOf(std::string_view text);

  /// Reads the next row. False at the end, and at a fault.
  [[nodiscard]] bool Next(std::vector<std::string>& cells);
  /// The line on which the row that was read last begins.
  [[nodiscard]] std::size_t line() const { return row_line_; }
  [[nodiscard]] const std::optional<CsvFault>& fault() const { return fault_; }
  /// How many bytes of the text have been read: where the next row begins.
  [[nodiscard]] std::size_t offset() const { return skipped_ + place_; }

 private:
  [[nodiscard]] bool ReadCell(std::string& cell);
  [[nodiscard]] bool ReadQuoted(std::string& cell);
  /// Takes what means nothing but itself within quotation marks, and no more than a row may have.
  void TakePlain(std::string& cell);
  [[nodiscard]] bool SkipEmptyLines();
  /// Whether the row that is being read goes on for longer than rows do.
  [[nodiscard]] bool IsEndless() const { return place_ - row_begin_ > kMostOfRow; }
  [[nodiscard]] bool Fail(std::size_t line, std::string_view text);
  [[nodiscard]] bool AtEnd() const { return place_ == text_.size(); }
  [[nodiscard]] bool AtLineEnd() const;
  void TakeLineEnd();

  std::string_view text_;
  char separator_;
  /// Length of the byte order mark.
  std::size_t skipped_;
  std::size_t place_ = 0;
  /// Where the row begins.
  std::size_t row_begin_ = 0;
  std::size_t line_ = 1;
  std::size_t row_line_ = 0;
  std::optional<CsvFault> fault_;
};

}  // namespace pelora::ctl
