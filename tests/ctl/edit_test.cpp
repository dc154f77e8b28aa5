// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include <filesystem>

#include "tests/ctl/peloractl.h"

namespace pelora::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class EditTest : public PeloractlTest {
 protected:
  EditTest() { environment["TMPDIR"] = File(""); }

  [[nodiscard]] ProgramRun Edit(const std::string& editor, std::vector<std::string> arguments) {
    environment["EDITOR"] = editor;
    arguments.insert(arguments.begin(), "edit");
    return Ctl(arguments);
  }
  [[nodiscard]] std::size_t TextsLeft() const {
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(File(""))) {
      if (entry.path().filename().string().starts_with("peloractl-")) ++count;
    }
    return count;
  }
};

TEST_F(EditTest, WhatWasChangedIsApplied) {
  const ProgramRun run = Edit(
      "sed -i -e 's/^peloraHidden: no/peloraHidden: yes/' "
      "-e 's/^otherMailbox:$/otherMailbox: a@b.example\\notherMailbox: c@d.example/'",
      {"h.oender", "t.richter"});
  EXPECT_EQ(run.code, 0) << run.output << run.errors;
  EXPECT_EQ(Stored(kHelga, "peloraHidden"), "1");
  EXPECT_EQ(Stored(kTom, "otherMailbox"), "a@b.example\nc@d.example");
  EXPECT_EQ(TextsLeft(), 0U);
}

TEST_F(EditTest, TheTextHasLabelsAndOneLineForEachValue) {
  const ProgramRun run = Edit("cat >&2", {"j.weissflog"});
  EXPECT_EQ(run.code, 0) << run.errors;
  EXPECT_THAT(run.errors, HasSubstr("\nCN=Jürgen Weißflog,"));
  EXPECT_THAT(run.errors, HasSubstr("# Hard limit\npeloraQuotaHard: 5000\n"));
  EXPECT_THAT(run.errors, HasSubstr("otherMailbox: juergen@linden-werke.example\notherMailbox: "));
  EXPECT_THAT(run.output, StartsWith("unchanged\t"));
}

TEST_F(EditTest, AnErrorOpensTheEditorAgainWithTheMessage) {
  const std::string script =
      Write("editor.sh",
            "if grep -q '^#! peloraQuotaHard: ' \"$1\"; then\n"
            "  sed -i 's/^peloraQuotaHard: .*/peloraQuotaHard: 6000/' \"$1\"\n"
            "else sed -i 's/^peloraQuotaHard: .*/peloraQuotaHard: lots/' \"$1\"; fi\n");
  const ProgramRun run = Edit("sh " + script, {"j.weissflog"});
  EXPECT_EQ(run.code, 0) << run.output << run.errors;
  EXPECT_EQ(Fields("j.weissflog").at("peloraQuotaHard"), 6000);
}

TEST_F(EditTest, LeavingAnErrorGivesUpAndKeepsTheText) {
  const std::string before = Dump();
  const ProgramRun run =
      Edit("sed -i 's/^peloraQuotaHard: .*/peloraQuotaHard: lots/'", {"j.weissflog"});
  EXPECT_EQ(run.code, 1);
  EXPECT_THAT(run.errors, HasSubstr(File("")));
  EXPECT_EQ(TextsLeft(), 1U);
  EXPECT_THAT(run.output, IsEmpty());
  EXPECT_EQ(Dump(), before);
}

TEST_F(EditTest, AnEditorThatFailsChangesNothing) {
  const ProgramRun run = Edit("false", {"j.weissflog"});
  EXPECT_EQ(run.code, 2);
  EXPECT_EQ(TextsLeft(), 1U);
}

TEST_F(EditTest, WhatSomebodyElseChangedMeanwhileIsNotOverwritten) {
  const std::string other = std::string(PELORACTL) + " --directory " + File("company.ldb") +
                            " set j.weissflog peloraQuotaHard=7000 >/dev/null 2>&1";
  const std::string script = Write(
      "editor.sh", other + "\nsed -i 's/^peloraQuotaHard: .*/peloraQuotaHard: 6000/' \"$1\"\n");
  const ProgramRun run = Edit("sh " + script, {"j.weissflog"});
  EXPECT_EQ(run.code, 1);
  EXPECT_THAT(run.output, HasSubstr("7000"));
  EXPECT_EQ(Fields("j.weissflog").at("peloraQuotaHard"), 7000);
}

}  // namespace
}  // namespace pelora::testing
