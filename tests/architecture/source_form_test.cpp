// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <regex>
#include <set>
#include <sstream>
#include <stdexcept>
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

/// Names of the functions that a header declares with `virtual` before them, or with `override`
/// behind them, wherever the line ends.
std::set<std::string> FunctionsOf(const std::string& path, const std::regex& declared) {
  std::string text;
  for (const SourceFile& file : ReadSources({"hosts/ldap"})) {
    if (file.path != path) continue;
    for (const std::string& line : file.lines) text += line + " ";
  }
  std::set<std::string> names;
  for (std::sregex_iterator at(text.begin(), text.end(), declared), end; at != end; ++at) {
    names.insert((*at)[1]);
  }
  return names;
}

TEST(SourceForm, EveryEntryOfTheStoresPortIsHandedOn) {
  const std::set<std::string> entries = FunctionsOf(
      "hosts/ldap/directory_store.h", std::regex("\\bvirtual (?:const )?[A-Za-z]+&? (\\w+)\\("));
  EXPECT_GT(entries.size(), 12U);
  EXPECT_EQ(FunctionsOf("hosts/ldap/forwarding_store.h",
                        std::regex("\\b(\\w+)\\([^()]*\\) (?:const )?override \\{")),
            entries);
}

/// What a command prints, errors included, by lines; and its exit status.
std::vector<std::string> LinesOf(const std::string& command, int& status) {
  FILE* pipe = popen((command + " 2>&1").c_str(), "r");
  if (pipe == nullptr) throw std::runtime_error("cannot run " + command);
  std::string output;
  for (int letter = std::fgetc(pipe); letter != EOF; letter = std::fgetc(pipe)) {
    output += static_cast<char>(letter);
  }
  status = pclose(pipe);
  std::vector<std::string> lines;
  std::istringstream stream(output);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

TEST(SourceForm, EveryFileIsFormatted) {
  std::string command = "clang-format --dry-run -Werror";
  for (const SourceFile& file : ReadSources(kFolders)) {
    command += " '" + (SourceRoot() / file.path).string() + "'";
  }
  int status = -1;
  std::set<std::string> unformatted;
  for (const std::string& line : LinesOf(command, status)) {
    if (line.find("error:") != std::string::npos)
      unformatted.insert(line.substr(0, line.find(':')));
  }
  EXPECT_THAT(unformatted, IsEmpty());
  EXPECT_EQ(status, 0);
}

}  // namespace
}  // namespace pelora::test
