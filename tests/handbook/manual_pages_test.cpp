// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include <fstream>
#include <stdexcept>

#include "hosts/ctl/command_line/command.h"
#include "hosts/ctl/manual/manual_page.h"
#include "hosts/session/check/check_rules.h"
#include "tests/handbook/shell.h"
#include "tests/support/temporary_folder.h"

namespace pelora::ctl {
namespace {

using test::Environment;
using test::ReadWholeFile;
using ::testing::HasSubstr;

std::string PathOf(const std::string& page) {
  return Environment("PELORA_MANUAL_FOLDER") + "/" + page;
}

/// What the formatter has to say of a page.
std::string WarningsOf(const std::string& path) {
  const pelora::testing::TemporaryFolder folder;
  const test::ShellResult result = test::RunShell(
      "LC_ALL=C.UTF-8 MANROFFSEQ='' MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z '" + path +
          "' > /dev/null",
      folder.path());
  EXPECT_EQ(result.exit_code, 0) << result.output;
  return result.output;
}

class ManualPages : public ::testing::TestWithParam<const char*> {};

TEST_P(ManualPages, AreCleanToTheFormatter) { EXPECT_EQ(WarningsOf(PathOf(GetParam())), ""); }

INSTANTIATE_TEST_SUITE_P(EveryPage, ManualPages,
                         ::testing::Values("peloractl.1", "pelora-console.1", "pelora-deploy.8"));

TEST(ManualPage, AFaultyOneIsNotClean) {
  const pelora::testing::TemporaryFolder folder;
  const std::string path = folder.File("faulty.1");
  std::ofstream(path) << ".TH FAULTY 1\n.SH NAME\nfaulty \\- wrong\n.NOSUCHMACRO\n";
  EXPECT_NE(WarningsOf(path), "");
}

TEST(ManualPage, OfTheCommandLineHasEveryCommandOptionAndRule) {
  const std::string page = ReadWholeFile(PathOf("peloractl.1"));
  for (const Command* command : Commands()) {
    EXPECT_THAT(page, HasSubstr(".SS " + ManualText(command->name) + "\n"));
    for (const std::span<const Option> options : command->options) {
      for (const Option& option : options) {
        EXPECT_THAT(page, HasSubstr(".B " + ManualText(option.name))) << option.name;
      }
    }
  }
  for (const Option& option : ConnectionOptions()) {
    EXPECT_THAT(page, HasSubstr(".B " + ManualText(option.name)));
  }
  for (const session::CheckRule& rule : session::CheckRules()) {
    EXPECT_THAT(page, HasSubstr(".B " + ManualText(rule.name) + "\n"));
  }
  for (const char* field : {"peloraQuotaHard", "accountType", "feature.imap", "otherMailbox"}) {
    EXPECT_THAT(page, HasSubstr(std::string(".B ") + field + "\n"));
  }
}

TEST(ManualPage, OfTheOthersHasTheirOptions) {
  EXPECT_THAT(ReadWholeFile(PathOf("pelora-console.1")), HasSubstr("\\-\\-screenshot"));
  const std::string deploy = ReadWholeFile(PathOf("pelora-deploy.8"));
  EXPECT_THAT(deploy, HasSubstr("\\-\\-dry\\-run"));
  EXPECT_THAT(deploy, HasSubstr("unregister"));
}

ManualSources Sources() {
  ManualSources sources;
  sources.version = "1.2.3";
  sources.commands = {"do"};
  sources.help_of = [](const std::string& name) {
    if (name == "it do") {
      return "Does.\nUsage: it do THING\n\nOptions:\n  --help  Help\n  --more X  More\n";
    }
    if (name == "it")
      return "It is.\nUsage: it COMMAND\n\nOptions:\n  --help  Help\n\nAnd so on.\n";
    throw std::runtime_error("no such help");
  };
  sources.table_of = [](const std::string& name) { return name == "things" ? ".TP\nthing\n" : ""; };
  return sources;
}

TEST(ManualPage, IsMadeOfWhatTheProgramSays) {
  EXPECT_EQ(MakeManualPage(".TH IT \"@VERSION@\"\n@USAGE it@\n@INTRODUCTION it@\n@NOTES it@\n"
                           "@SECTION it: Options@\n@TABLE things@\n",
                           Sources()),
            ".TH IT \"1.2.3\"\n.B it COMMAND\n.PP\nIt is.\n.PP\nAnd so on.\n.TP\n.B "
            "\\-\\-help\nHelp\n.TP\nthing\n");
}

TEST(ManualPage, TellsOfACommandWhatIsItsOwn) {
  EXPECT_EQ(MakeManualPage("@COMMANDS it@\n", Sources()),
            ".SS do\n.B it do THING\n.PP\nDoes.\n.TP\n.B \\-\\-more X\nMore\n");
}

TEST(ManualPage, StandsForNothingUnknown) {
  for (const char* line : {"@NOTHING it@", "@USAGE@", "@USAGE other@", "@SECTION it: None@",
                           "@SECTION it@", "@TABLE none@"}) {
    EXPECT_THROW((void)MakeManualPage(line, Sources()), std::runtime_error) << line;
  }
}

TEST(ManualPage, HasNoSignThatMeansSomethingElse) {
  EXPECT_EQ(ManualText(".a\n'b\\-\"'"), "\\&.a\n\\&\\(aqb\\e\\-\\(dq\\(aq");
}

}  // namespace
}  // namespace pelora::ctl
