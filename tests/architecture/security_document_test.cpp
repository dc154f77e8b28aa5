// SPDX-License-Identifier: Apache-2.0
// SECURITY.md names the tests that hold its promises; each of them has to be there.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "tests/architecture/source_tree.h"

namespace pelora::test {
namespace {

std::string Document() {
  std::ifstream file(SourceRoot() / "SECURITY.md");
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// `Suite.Test`, as a document names tests.
std::vector<std::string> NamedTests(const std::string& text) {
  static const std::regex kName("`([A-Z][A-Za-z0-9]+\\.[A-Z][A-Za-z0-9]+)`");
  std::vector<std::string> names;
  for (std::sregex_iterator at(text.begin(), text.end(), kName), end; at != end; ++at) {
    names.push_back((*at)[1]);
  }
  return names;
}

std::set<std::string> DefinedTests() {
  static const std::regex kDefinition("^TEST(_F|_P)?\\((\\w+),\\s*(\\w+)\\)");
  std::set<std::string> names;
  for (const SourceFile& file : ReadSources({"tests"})) {
    for (std::size_t at = 0; at < file.lines.size(); ++at) {
      // A long name stands in the next line.
      const std::string line =
          file.lines[at] + (at + 1 < file.lines.size() ? file.lines[at + 1] : "");
      std::smatch found;
      if (std::regex_search(line, found, kDefinition)) {
        names.insert(found[2].str() + '.' + found[3].str());
      }
    }
  }
  return names;
}

TEST(SecurityDocument, EveryTestThatItNamesIsThere) {
  const std::vector<std::string> named = NamedTests(Document());
  EXPECT_GT(named.size(), 20U);
  const std::set<std::string> defined = DefinedTests();
  for (const std::string& name : named) EXPECT_TRUE(defined.contains(name)) << name;
}

TEST(SecurityDocument, ANameThatIsNoTestIsSeen) {
  EXPECT_THAT(NamedTests("holds: `Nowhere.NothingHoldsThis`, `krb5.conf`"),
              ::testing::ElementsAre("Nowhere.NothingHoldsThis"));
  EXPECT_FALSE(DefinedTests().contains("Nowhere.NothingHoldsThis"));
  EXPECT_TRUE(DefinedTests().contains("SecurityDocument.ANameThatIsNoTestIsSeen"));
}

}  // namespace
}  // namespace pelora::test
