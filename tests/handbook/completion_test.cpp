// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include <sstream>
#include <string>
#include <vector>

#include "tests/handbook/shell.h"
#include "tests/support/temporary_folder.h"

namespace pelora::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
using ::testing::Not;

std::string Script() { return Environment("PELORA_MANUAL_FOLDER") + "/peloractl.bash"; }

/// What is offered for the last of the words that the shell has taken a line apart into.
std::vector<std::string> Offered(const std::vector<std::string>& words) {
  const pelora::testing::TemporaryFolder folder;
  std::string script = "source '" + Script() + "'\nset +eu\nCOMP_WORDS=(";
  for (const std::string& word : words) script += "'" + word + "' ";
  script += ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_peloractl\nset -eu\n";
  script += "for word in \"${COMPREPLY[@]}\"; do printf '%s\\n' \"$word\"; done\n";
  std::istringstream lines(RunShell(script, folder.path()).output);
  std::vector<std::string> offered;
  for (std::string line; std::getline(lines, line);) offered.push_back(line);
  return offered;
}

TEST(Completion, PleasesShellcheck) {
  const pelora::testing::TemporaryFolder folder;
  const ShellResult result =
      RunShell("shellcheck --severity=style '" + Script() + "'", folder.path());
  EXPECT_EQ(result.exit_code, 0) << result.output;
}

TEST(Completion, OffersCommandsAndConnections) {
  EXPECT_THAT(Offered({"peloractl", ""}),
              IsSupersetOf({"show", "list", "set", "apply", "edit", "check", "undo", "fields",
                            "--directory", "--server", "--sample"}));
  EXPECT_THAT(Offered({"peloractl", "che"}), ElementsAre("check"));
  EXPECT_THAT(Offered({"peloractl", "--sample", "li"}), ElementsAre("list"));
}

TEST(Completion, OffersTheOptionsOfTheCommand) {
  EXPECT_THAT(Offered({"peloractl", "set", "ada", "--"}),
              IsSupersetOf({"--dry-run", "--undo-file", "--class", "--json"}));
  EXPECT_THAT(Offered({"peloractl", "show", "--"}), Not(Contains("--dry-run")));
  EXPECT_THAT(Offered({"peloractl", "check", "--fi"}), ElementsAre("--fix"));
  EXPECT_THAT(Offered({"peloractl", "--vers"}), ElementsAre("--version"));
  EXPECT_THAT(Offered({"peloractl", "check", "--vers"}), IsEmpty());
}

TEST(Completion, OffersFieldsAndTheirValues) {
  EXPECT_THAT(Offered({"peloractl", "set", "ada", "peloraQuotaO"}),
              ElementsAre("peloraQuotaOverride="));
  EXPECT_THAT(Offered({"peloractl", "set", "ada", "peloraQuotaOverride", "="}),
              ElementsAre("yes", "no"));
  EXPECT_THAT(Offered({"peloractl", "set", "ada", "accountType", "=", "sys"}),
              ElementsAre("system-administrator"));
  EXPECT_THAT(Offered({"peloractl", "set", "ada", "feature.imap", "=", "e"}),
              ElementsAre("enabled"));
  EXPECT_THAT(Offered({"peloractl", "set", "ada", "peloraQuotaHard", "="}), IsEmpty());
}

TEST(Completion, OffersRulesClassesAndColumns) {
  EXPECT_THAT(Offered({"peloractl", "check", "--rule", "address-"}),
              ElementsAre("address-duplicate", "address-missing", "address-syntax"));
  EXPECT_THAT(Offered({"peloractl", "list", "dyn"}), ElementsAre("dynamiclist"));
  EXPECT_THAT(Offered({"peloractl", "set", "--class", "comp"}), ElementsAre("company"));
  EXPECT_THAT(Offered({"peloractl", "new", "u"}), ElementsAre("user"));
  EXPECT_THAT(Offered({"peloractl", "list", "--columns", "peloraQuotaH"}),
              ElementsAre("peloraQuotaHard"));
}

}  // namespace
}  // namespace pelora::test
