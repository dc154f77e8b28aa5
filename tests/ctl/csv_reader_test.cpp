// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/text/csv_reader.h"

#include <gmock/gmock.h>

#include "hosts/ctl/fields/fields.h"

namespace pelora::ctl {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using Rows = std::vector<std::vector<std::string>>;

Rows Read(std::string_view text, char separator = ',') {
  CsvReader reader(text, separator);
  Rows rows;
  for (std::vector<std::string> row; reader.Next(row);) rows.push_back(row);
  EXPECT_FALSE(reader.fault()) << reader.fault()->text;
  return rows;
}

/// The fault of a text, as "LINE: TEXT"; empty when there is none.
std::string FaultOf(std::string_view text) {
  CsvReader reader(text);
  for (std::vector<std::string> row; reader.Next(row);) {
  }
  if (!reader.fault()) return {};
  return std::to_string(reader.fault()->line) + ": " + reader.fault()->text;
}

TEST(CsvReader, RowsEndWithEitherLineEndOrTheText) {
  EXPECT_EQ(Read("a,b\r\nc,d\n"), (Rows{{"a", "b"}, {"c", "d"}}));
  EXPECT_EQ(Read("a,b\nc,d"), (Rows{{"a", "b"}, {"c", "d"}}));
  EXPECT_EQ(Read(""), Rows{});
  EXPECT_EQ(Read("\r\n\n"), Rows{});
}

TEST(CsvReader, CellsMayBeEmpty) {
  EXPECT_EQ(Read(",\n"), (Rows{{"", ""}}));
  EXPECT_EQ(Read("a,\n,b"), (Rows{{"a", ""}, {"", "b"}}));
  EXPECT_EQ(Read("a,"), (Rows{{"a", ""}}));
  EXPECT_EQ(Read("\"\"\n"), (Rows{{""}}));
}

TEST(CsvReader, QuotationMarksHoldEverything) {
  EXPECT_EQ(Read("\"a,b\",\"c\r\nd\",\"say \"\"x\"\"\"\n"), (Rows{{"a,b", "c\r\nd", "say \"x\""}}));
}

TEST(CsvReader, AByteOrderMarkIsPassedOverAndCounted) {
  const std::string text =
      "\xEF\xBB\xBF"
      "a\nb\n";
  EXPECT_EQ(Read(text), (Rows{{"a"}, {"b"}}));
  CsvReader reader(text);
  std::vector<std::string> row;
  ASSERT_TRUE(reader.Next(row));
  EXPECT_EQ(Read(std::string_view(text).substr(reader.offset())), (Rows{{"b"}}));
}

TEST(CsvReader, TheHeaderSaysWhatDividesCells) {
  EXPECT_EQ(CsvReader::SeparatorOf("a;b\nc,d"), ';');
  EXPECT_EQ(CsvReader::SeparatorOf("a;b,c\n"), ',');
  EXPECT_EQ(CsvReader::SeparatorOf("\n\"a,b\";c\n"), ';');
  EXPECT_EQ(CsvReader::SeparatorOf("a\nb;c"), ',');
  EXPECT_EQ(Read("a;b,c", ';'), (Rows{{"a", "b,c"}}));
}

TEST(CsvReader, LinesAreCountedThroughQuotationMarks) {
  CsvReader reader("a\n\n\"b\nc\"\nd\n");
  std::vector<std::string> row;
  std::vector<std::size_t> lines;
  while (reader.Next(row)) lines.push_back(reader.line());
  EXPECT_THAT(lines, ElementsAre(1U, 3U, 5U));
}

TEST(CsvReader, FaultsAreToldWithTheirLine) {
  EXPECT_EQ(FaultOf("a\nb\"c\n"), "2: a quotation mark inside a cell that does not begin with one");
  EXPECT_EQ(FaultOf("a\n\"b\n\nc"), "2: the closing quotation mark is missing");
  EXPECT_EQ(FaultOf("\"a\nb\"c\n"), "2: something stands behind the closing quotation mark");
  EXPECT_EQ(FaultOf("a\rb\n"), "1: a carriage return without a line feed");
  EXPECT_EQ(FaultOf(std::string_view("a\n\0", 3)), "2: a zero byte");
  EXPECT_EQ(FaultOf("a\n\xC3\n"), "2: this is not UTF-8");
  EXPECT_EQ(FaultOf("\"a\nb\xED\xA0\x80\"\n"), "2: this is not UTF-8");
}

TEST(CsvReader, ARowHasAnEnd) {
  const std::string longest(CsvReader::kMostOfRow - 1, 'a');
  EXPECT_EQ(FaultOf("x\n" + longest + "\ny"), "");
  EXPECT_THAT(FaultOf("x\n" + longest + "aaa\ny"), HasSubstr("2: the row is longer than 16 MB"));
  EXPECT_THAT(FaultOf("x\ny,\"" + longest), HasSubstr("2: the row is longer than 16 MB"));
}

TEST(CsvReader, ReadsWhatTheWriterWrites) {
  const std::vector<std::string> cells = {"", "plain", "a,b", "a;b", "\"", "x\r\ny", " blanks "};
  EXPECT_EQ(Read(CsvRow(cells) + CsvRow(std::vector<std::string>{""})), (Rows{cells, {""}}));
}

}  // namespace
}  // namespace pelora::ctl
