// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "directory/attribute_catalogue.h"
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

/// The rows of the attribute table: those that begin with a name and have four columns.
std::vector<std::string> DocumentedRows() {
  std::ifstream document(SourceRoot() / "docs/attributes.md");
  std::vector<std::string> rows;
  for (std::string line; std::getline(document, line);) {
    if (!line.starts_with("| `")) continue;
    // Everything before the meaning, which is prose.
    const std::size_t end = line.rfind(" | ", line.size() - 3);
    rows.push_back(line.substr(0, end));
  }
  return rows;
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
