// SPDX-License-Identifier: Apache-2.0
// Runs what the handbook of the command line tells its readers to run, on the sample company.
#include <gmock/gmock.h>

#include <cstdlib>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "hosts/ldap/create_ldb_directory.h"
#include "hosts/ldap/sample_company.h"
#include "hosts/session/check/check_rules.h"
#include "tests/handbook/shell.h"
#include "tests/support/temporary_folder.h"

namespace pelora::test {
namespace {

/// One thing to be run, in the order of the handbook: a block of commands, or a command in a remark
/// that prepares something (`do:`) or looks whether a recipe did what it says (`expect:`).
struct Step {
  std::size_t line = 0;
  std::string script;
  int exit_code = 0;
};

/// A file that the handbook shows.
struct ShownFile {
  std::string name;
  std::string text;
};

struct Recipe {
  std::string title;
  std::vector<Step> steps;
  std::vector<ShownFile> files;
  int expectations = 0;
};

class HandbookReader {
 public:
  [[nodiscard]] std::vector<Recipe> Read(std::istream& handbook) {
    std::string line;
    while (std::getline(handbook, line)) Take(line);
    return std::move(recipes_);
  }

 private:
  void Take(const std::string& line) {
    ++line_;
    if (is_in_block_) {
      if (line == "```") {
        is_in_block_ = false;
      } else if (block_ != nullptr) {
        *block_ += line + "\n";
      }
    } else if (line.starts_with("```")) {
      BeginBlock(line.substr(3));
    } else if (line.starts_with("## ") || line.starts_with("### ")) {
      recipes_.push_back({.title = line.substr(line.find(' ') + 1), .steps = {}, .files = {}});
    } else {
      TakeRemark(line, "<!-- do: ");
      if (TakeRemark(line, "<!-- expect: ")) ++recipes_.back().expectations;
    }
  }

  void BeginBlock(const std::string& info) {
    is_in_block_ = true;
    block_ = nullptr;
    constexpr std::string_view kFile = "csv ";
    constexpr std::string_view kExit = "sh exit=";
    if (info.starts_with(kFile)) {
      recipes_.back().files.push_back({.name = info.substr(kFile.size()), .text = {}});
      block_ = &recipes_.back().files.back().text;
    } else if (info == "sh" || info.starts_with(kExit)) {
      const int code = info == "sh" ? 0 : std::stoi(info.substr(kExit.size()));
      recipes_.back().steps.push_back({.line = line_, .script = {}, .exit_code = code});
      block_ = &recipes_.back().steps.back().script;
    }
  }

  bool TakeRemark(const std::string& line, const std::string& begin) {
    constexpr std::string_view kEnd = " -->";
    if (!line.starts_with(begin) || !line.ends_with(kEnd)) return false;
    const std::size_t length = line.size() - begin.size() - kEnd.size();
    recipes_.back().steps.push_back(
        {.line = line_, .script = line.substr(begin.size(), length), .exit_code = 0});
    return true;
  }

  std::vector<Recipe> recipes_;
  std::size_t line_ = 0;
  bool is_in_block_ = false;
  std::string* block_ = nullptr;
};

std::vector<Recipe> ReadHandbook() {
  std::ifstream handbook(Environment("PELORA_SOURCE_DIR") + "/docs/peloractl.md");
  EXPECT_TRUE(handbook.is_open());
  return HandbookReader().Read(handbook);
}

/// Runs the steps of one recipe on a sample company of its own.
void Play(const Recipe& recipe) {
  const pelora::testing::TemporaryFolder folder;
  const std::string directory = folder.File("company.ldb");
  ASSERT_TRUE(ldap::CreateLdbDirectory(directory, ldap::SampleCompanyLdif()).Ok());
  ASSERT_EQ(setenv("PELORA_DIRECTORY", directory.c_str(), 1), 0);
  for (const ShownFile& file : recipe.files) std::ofstream(folder.File(file.name)) << file.text;
  for (const Step& step : recipe.steps) {
    const ShellResult result = RunShell(step.script, folder.path());
    ASSERT_EQ(result.exit_code, step.exit_code) << "docs/peloractl.md, line " << step.line << ":\n"
                                                << step.script << "\n"
                                                << result.output;
  }
}

TEST(Recipes, DoWhatTheySay) {
  std::size_t played = 0;
  for (const Recipe& recipe : ReadHandbook()) {
    if (recipe.steps.empty()) continue;
    SCOPED_TRACE(recipe.title);
    Play(recipe);
    ++played;
  }
  EXPECT_GE(played, 8U);
}

TEST(Recipes, AreThoseThatAdministratorsLookFor) {
  std::set<std::string> titles;
  for (const Recipe& recipe : ReadHandbook()) {
    if (!recipe.steps.empty()) titles.insert(recipe.title);
  }
  for (const char* title :
       {"Move all users of a unit to another server", "Set quotas from a spreadsheet",
        "List who has no address", "New employees from a CSV",
        "What did I change yesterday, and back", "Find and mend duplicates",
        "A check every night, with mail when something is found"}) {
    EXPECT_TRUE(titles.contains(title)) << title;
  }
}

TEST(Recipes, AStepThatFailsIsSeen) {
  const pelora::testing::TemporaryFolder folder;
  EXPECT_EQ(RunShell("false\ntrue", folder.path()).exit_code, 1);
  EXPECT_EQ(RunShell("peloractl no-such-command", folder.path()).exit_code, 2);
  std::istringstream handbook("## A\n```sh exit=3\nexit 3\n```\n<!-- expect: true -->\n");
  const std::vector<Recipe> recipes = HandbookReader().Read(handbook);
  ASSERT_EQ(recipes.size(), 1U);
  ASSERT_EQ(recipes[0].steps.size(), 2U);
  EXPECT_EQ(recipes[0].steps[0].exit_code, 3);
  EXPECT_EQ(recipes[0].expectations, 1);
}

TEST(Recipes, TheHandbookNamesEveryRuleOfTheCheckAndNoOther) {
  const std::string text = ReadWholeFile(Environment("PELORA_SOURCE_DIR") + "/docs/peloractl.md");
  std::istringstream lines(text.substr(text.find("## Checks")));
  std::vector<std::string> named;
  std::string line;
  while (std::getline(lines, line)) {
    if (line.starts_with("| `")) named.push_back(line.substr(3, line.find('`', 3) - 3));
  }
  std::vector<std::string> rules;
  for (const session::CheckRule& rule : session::CheckRules()) rules.emplace_back(rule.name);
  EXPECT_EQ(named, rules);
}

}  // namespace
}  // namespace pelora::test
