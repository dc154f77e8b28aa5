// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "directory/attribute_catalogue.h"
#include "tests/architecture/field_tables.h"
#include "tests/architecture/source_tree.h"

namespace pelora::test {
namespace {

std::string EncodingWord(const Attribute& attribute) {
  switch (attribute.encoding) {
    case Encoding::kFlag:
      return "flag";
    case Encoding::kInteger:
      return attribute.name.find("Quota") == std::string_view::npos ? "integer" : "integer (MB)";
    case Encoding::kString:
      return "string";
    case Encoding::kList:
      return "list";
    case Encoding::kNameList:
      return "name list";
  }
  return "";
}

std::string RuleWord(const Attribute& attribute) {
  switch (attribute.multi_selection) {
    case MultiSelectionRule::kNo:
      return "no";
    case MultiSelectionRule::kWhenChanged:
      return "when changed";
    case MultiSelectionRule::kAlways:
      return "always";
    case MultiSelectionRule::kPerObject:
      return "each its own";
    case MultiSelectionRule::kNeverWritten:
      return "never written";
  }
  return "";
}

using Lines = std::vector<std::string>;

Lines DocumentLines() {
  std::ifstream document(SourceRoot() / "docs/attributes.md");
  Lines lines;
  for (std::string line; std::getline(document, line);) lines.push_back(line);
  return lines;
}

/// The rows of the attribute table: those that begin with a name and have four columns.
Lines DocumentedRows() {
  Lines rows;
  for (const std::string& line : DocumentLines()) {
    if (!line.starts_with("| `")) continue;
    // Everything before the meaning, which is prose.
    const std::size_t end = line.rfind(" | ", line.size() - 3);
    rows.push_back(line.substr(0, end));
  }
  return rows;
}

/// Where a table that is made from the pages begins and ends in the document.
constexpr const char* kTabsBegin = "<!-- fields of the tabs -->";
constexpr const char* kWizardsBegin = "<!-- fields of new objects -->";
constexpr const char* kEnd = "<!-- end -->";

/// The lines between two marks, without them.
Lines Between(const Lines& lines, const std::string& begin) {
  const auto first = std::ranges::find(lines, begin);
  const auto last = std::find(first, lines.end(), kEnd);
  EXPECT_NE(last, lines.end()) << begin;
  return first == lines.end() ? Lines{} : Lines(first + 1, last);
}

void Replace(Lines& lines, const std::string& begin, const Lines& table) {
  const auto first = std::ranges::find(lines, begin);
  const auto last = std::find(first, lines.end(), kEnd);
  ASSERT_NE(last, lines.end()) << begin;
  const auto behind = lines.erase(first + 1, last);
  lines.insert(behind, table.begin(), table.end());
}

/// Whether the tables are to be written anew instead of being compared.
bool WritesDocuments() { return std::getenv("PELORA_WRITE_DOCUMENTS") != nullptr; }

void WriteTables() {
  Lines lines = DocumentLines();
  Replace(lines, kTabsBegin, TabTable());
  Replace(lines, kWizardsBegin, WizardTable());
  std::ofstream document(SourceRoot() / "docs/attributes.md");
  for (const std::string& line : lines) document << line << '\n';
}

TEST(AttributeDocument, HasTheFieldsOfEveryPage) {
  if (WritesDocuments()) WriteTables();
  const Lines lines = DocumentLines();
  const std::string how =
      "PELORA_WRITE_DOCUMENTS=1 ctest --preset native -R architecture_test "
      "writes the tables anew";
  EXPECT_EQ(Between(lines, kTabsBegin), TabTable()) << how;
  EXPECT_EQ(Between(lines, kWizardsBegin), WizardTable()) << how;
}

TEST(AttributeDocument, ListsTheCatalogue) {
  std::vector<std::string> expected;
  for (const Attribute& attribute : kAttributeCatalogue) {
    expected.push_back("| `" + std::string(attribute.name) + "` | " + EncodingWord(attribute) +
                       " | " + RuleWord(attribute));
  }
  EXPECT_EQ(DocumentedRows(), expected);
}

}  // namespace
}  // namespace pelora::test
