// SPDX-License-Identifier: Apache-2.0
// The sentences of tests/ctl/promises.md, held to the tests that they name.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <set>
#include <sstream>

#include "tests/architecture/source_tree.h"

namespace pelora::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// A sentence, and the tests that it names.
struct Promise {
  std::string sentence;
  std::vector<std::string> tests;
};

/// The rows of the document's tables; a row is a sentence and what holds it.
std::vector<Promise> ReadPromises(std::istream& document) {
  static const std::regex test_name("`([A-Za-z0-9]+\\.[A-Za-z0-9]+)`");
  std::vector<Promise> promises;
  for (std::string line; std::getline(document, line);) {
    if (!line.starts_with("| ") || line == "| promise | held by |") continue;
    // A sentence may name fields, and holds no bar.
    const std::size_t bar = line.find(" |", 2);
    Promise promise{.sentence = line.substr(2, bar - 2), .tests = {}};
    const std::string held_by = line.substr(bar + 2);
    for (std::sregex_iterator name(held_by.begin(), held_by.end(), test_name), end; name != end;
         ++name) {
      promise.tests.push_back((*name)[1]);
    }
    promises.push_back(std::move(promise));
  }
  return promises;
}

/// Every test of the project, as "Suite.Name".
const std::set<std::string>& AllTests() {
  static const std::set<std::string> all = [] {
    const std::regex declaration(R"(^TEST(?:_F|_P)?\((\w+),\s*(\w+)\))");
    std::set<std::string> tests;
    for (const SourceFile& file : ReadSources({"tests"})) {
      for (const std::string& line : file.lines) {
        std::smatch found;
        if (!line.starts_with("TEST") || !std::regex_search(line, found, declaration)) continue;
        tests.insert(found[1].str() + "." + found[2].str());
      }
    }
    return tests;
  }();
  return all;
}

/// What is wrong with promises: those that nothing holds, and tests that there are not.
std::vector<std::string> FaultsOf(const std::vector<Promise>& promises) {
  std::vector<std::string> faults;
  for (const Promise& promise : promises) {
    if (promise.tests.empty()) faults.push_back("nothing holds: " + promise.sentence);
    for (const std::string& test : promise.tests) {
      if (!AllTests().contains(test)) faults.push_back("there is no test " + test);
    }
  }
  return faults;
}

TEST(Promises, AreHeldByTestsThatThereAre) {
  std::ifstream document(SourceRoot() / "tests/ctl/promises.md");
  const std::vector<Promise> promises = ReadPromises(document);
  EXPECT_THAT(promises, SizeIs(::testing::Ge(130U)));
  EXPECT_THAT(FaultsOf(promises), IsEmpty());
}

TEST(Promises, ThatNothingHoldsAreFound) {
  std::istringstream document(
      "| promise | held by |\n|--|--|\n| `a.b` is so | `Promises.ThatNothingHoldsAreFound` |\n"
      "| nobody looks | |\n| somebody did | `Promises.ThatWasRenamed` |\n");
  EXPECT_THAT(
      FaultsOf(ReadPromises(document)),
      ElementsAre("nothing holds: nobody looks", "there is no test Promises.ThatWasRenamed"));
}

}  // namespace
}  // namespace pelora::test
