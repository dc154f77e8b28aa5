// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "tests/architecture/source_tree.h"

namespace pelora::test {
namespace {

using ::testing::IsEmpty;

const std::vector<std::string> kFolders = {"src", "hosts", "tests"};

TEST(SourceForm, EveryFileNamesItsLicenceInItsFirstLine) {
  std::vector<std::string> without;
  for (const SourceFile& file : ReadSources(kFolders)) {
    const std::string first = file.lines.empty() ? std::string() : file.lines.front();
    if (first != "// SPDX-License-Identifier: Apache-2.0") without.push_back(file.path);
  }
  EXPECT_THAT(without, IsEmpty());
}

TEST(SourceForm, NoFileIsAGiant) {
  constexpr std::size_t kMostLines = 400;
  std::vector<std::string> giants;
  for (const SourceFile& file : ReadSources({"src", "hosts"})) {
    if (file.lines.size() > kMostLines) giants.push_back(file.path);
  }
  EXPECT_THAT(giants, IsEmpty());
}

TEST(SourceForm, EveryFileIsFormatted) {
  std::vector<std::string> unformatted;
  for (const SourceFile& file : ReadSources(kFolders)) {
    const std::string command =
        "clang-format --dry-run -Werror '" + (SourceRoot() / file.path).string() + "' 2>/dev/null";
    if (std::system(command.c_str()) != 0) unformatted.push_back(file.path);
  }
  EXPECT_THAT(unformatted, IsEmpty());
}

}  // namespace
}  // namespace pelora::test
