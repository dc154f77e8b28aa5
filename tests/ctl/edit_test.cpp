// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include <filesystem>

#include "tests/ctl/peloractl.h"

namespace pelora::testing {
namespace {

using ::testing::AnyOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

class EditTest : public PeloractlTest {
 protected:
  EditTest() { environment["TMPDIR"] = File(""); }

  [[nodiscard]] ProgramRun Edit(const std::string& editor, std::vector<std::string> arguments) {
    environment["EDITOR"] = editor;
    arguments.insert(arguments.begin(), "edit");
    return Ctl(arguments);
  }
  [[nodiscard]] std::vector<std::string> LeftTexts() const {
    std::vector<std::string> paths;
    for (const auto& entry : std::filesystem::directory_iterator(File(""))) {
      if (entry.path().filename().string().starts_with("peloractl-")) paths.push_back(entry.path());
    }
    return paths;
  }
  [[nodiscard]] std::size_t TextsLeft() const { return LeftTexts().size(); }
  /// What stands in the one text that is left.
  [[nodiscard]] std::string TextLeft() const {
    const std::vector<std::string> paths = LeftTexts();
    return paths.size() == 1 ? Read(paths.front()) : std::to_string(paths.size()) + " texts";
  }
};

TEST_F(EditTest, WhatWasChangedIsApplied) {
  // With the mark that some editors write before UTF-8.
  const ProgramRun run = Edit(
      "sed -i -e '1s/^/\xEF\xBB\xBF/' -e 's/^peloraHidden: no/peloraHidden: yes/' "
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

TEST_F(EditTest, ValuesThatAreNoTextStayAsTheyAreUnlessTheyAreEdited) {
  const std::string list = std::string("CN=Alle Personen,OU=Adresslisten,") + kUnit;
  // The bytes 66 FF 66, and a sign that turns the direction of text around.
  for (const std::string value : {"Zv9m", "ZuKArmY="}) {
    ASSERT_EQ(RunProgram({"/usr/bin/ldbmodify", "-H", File("company.ldb")}, {{"PATH", "/usr/bin"}},
                         "dn: " + list + "\nchangetype: modify\nreplace: description\n" +
                             "description:: " + value + "\n")
                  .code,
              0);
    const std::string stored = Stored(list, "description");
    for (const char* flip :
         {"s/^peloraHidden: no/peloraHidden: yes/", "s/^peloraHidden: yes/peloraHidden: no/"}) {
      const ProgramRun run = Edit("sed -i '" + std::string(flip) + "'", {list});
      EXPECT_THAT(run.output, StartsWith("changed\t")) << run.errors;
    }
    EXPECT_EQ(Stored(list, "description"), stored);
    const ProgramRun shown = Edit("cat >&2", {list});
    EXPECT_THAT(shown.errors, AnyOf(HasSubstr("description: f\\xFFf\n"),
                                    HasSubstr("description:: \"f\\u202ef\"\n")));
  }
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
  EXPECT_EQ(Dump(), before);
}

TEST_F(EditTest, WhoChangesTheMessageAloneHasLeftTheTextAsItIs) {
  // A script's expression meets the message above the line too. It would do so for ever: it counts.
  const std::string rounds = File("rounds");
  const std::string script =
      Write("editor.sh", "sed -i 's/peloraQuotaHard: .*/peloraQuotaHard: lots/' \"$1\"\necho >>" +
                             rounds + "\ntest \"$(wc -l <" + rounds + ")\" -lt 9\n");
  const ProgramRun run = Edit("sh " + script, {"j.weissflog"});
  EXPECT_EQ(run.code, 1) << run.errors;
  EXPECT_EQ(Read(rounds), "\n\n");
  EXPECT_THAT(run.errors, HasSubstr("the text is in " + File("")));
}

TEST_F(EditTest, AScriptThatIsWrongEachTimeIsNotCalledForEver) {
  // It would be, and fails in the end so that the test does not.
  const std::string rounds = File("rounds");
  const std::string script = Write("editor.sh", "echo lots >>\"$1\"\necho >>" + rounds +
                                                    "\ntest \"$(wc -l <" + rounds + ")\" -lt 30\n");
  const std::string before = Dump();
  const ProgramRun run = Edit("sh " + script, {"j.weissflog"});
  EXPECT_EQ(run.code, 1) << run.errors;
  EXPECT_EQ(Read(rounds), std::string(10, '\n'));
  EXPECT_THAT(run.errors, HasSubstr("the text is in " + File("")));
  EXPECT_THAT(TextLeft(), EndsWith("lots\n"));
  EXPECT_EQ(Dump(), before);
}

TEST_F(EditTest, APersonMayBeWrongAsOftenAsItTakes) {
  const std::string rounds = File("rounds");
  environment["EDITOR"] =
      "sh " +
      Write("editor.sh",
            "echo >>" + rounds + "\nif test \"$(wc -l <" + rounds +
                ")\" -lt 14; then echo lots >>\"$1\"\n"
                "else sed -i '/^lots$/d; s/^peloraHidden: no/peloraHidden: yes/' \"$1\"; fi\n");
  const std::string command =
      std::string(PELORACTL) + " --directory " + File("company.ldb") + " edit h.oender";
  // The terminal is one of the run's own.
  const ProgramRun run = RunProgram({"/usr/bin/script", "-qec", command, "/dev/null"}, environment);
  EXPECT_EQ(run.code, 0) << run.output;
  EXPECT_EQ(Read(rounds), std::string(14, '\n'));
  EXPECT_EQ(Stored(kHelga, "peloraHidden"), "1");
}

TEST_F(EditTest, GivingUpEndsWithTheResultOfEachObjectAndTheSums) {
  const ProgramRun run = Edit("sed -i 's/^peloraQuotaHard: .*/peloraQuotaHard: lots/'",
                              {"j.weissflog", "nobody", "--undo-file", File("undo")});
  EXPECT_EQ(run.code, 1);
  ASSERT_EQ(run.Lines().size(), 2U);
  EXPECT_THAT(run.Lines()[0], StartsWith("refused\tCN=Jürgen Weißflog,"));
  EXPECT_THAT(run.Lines()[0], HasSubstr("\tthe edited text was given up: peloraQuotaHard: "));
  EXPECT_EQ(run.Lines()[1], "refused\tnobody\tno such object");
  EXPECT_THAT(run.errors, EndsWith("\n0 changed, 0 unchanged, 2 refused, 0 failed, 0 unknown, "
                                   "0 skipped\n"));
  EXPECT_FALSE(std::filesystem::exists(File("undo")));
}

TEST_F(EditTest, SelectionsAreEditedAndNothingIsSentForNoChange) {
  const std::string before = Dump();
  const std::string base = std::string("OU=IT,") + kUnit;
  const ProgramRun run = Edit("true", {"--class", "user", "--base", base});
  EXPECT_EQ(run.code, 0) << run.errors;
  EXPECT_GT(run.Lines().size(), 2U);
  for (const std::string& line : run.Lines()) EXPECT_THAT(line, StartsWith("unchanged\t"));
  EXPECT_EQ(Dump(), before);
}

TEST_F(EditTest, WhereTheObjectsComeFromStandardInputTheEditorHasTheTerminal) {
  environment["EDITOR"] =
      "sh " +
      Write("editor.sh", "test -t 0 && sed -i 's/^peloraHidden: no/peloraHidden: yes/' \"$1\"\n");
  const std::string command = std::string("printf 'h.oender\\n' | ") + PELORACTL + " --directory " +
                              File("company.ldb") + " edit --from -";
  const ProgramRun run = RunProgram({"/usr/bin/script", "-qec", command, "/dev/null"}, environment);
  EXPECT_EQ(run.code, 0) << run.output;
  EXPECT_EQ(Stored(kHelga, "peloraHidden"), "1");
  // Without a terminal it has what is left of the input.
  const ProgramRun without = RunProgram({"/usr/bin/setsid", "-w", PELORACTL, "--directory",
                                         File("company.ldb"), "edit", "--from", "-"},
                                        environment, "t.richter\n");
  EXPECT_EQ(without.code, 2) << without.errors;
  EXPECT_THAT(without.errors, HasSubstr("failed; the text is in "));
}

TEST_F(EditTest, TheVisualEditorComesFirst) {
  environment["VISUAL"] = "sed -i 's/^peloraHidden: no/peloraHidden: yes/'";
  const ProgramRun run = Edit("false", {"h.oender"});
  EXPECT_EQ(run.code, 0) << run.errors;
  EXPECT_EQ(Stored(kHelga, "peloraHidden"), "1");
}

TEST_F(EditTest, ASignalThatEndsItTellsWhereTheTextIs) {
  const std::string before = Dump();
  // The editor goes on until the program is gone, as one on a terminal of its own would.
  const ProgramRun run = Edit(
      "sed -i 's/^peloraQuotaHard: .*/peloraQuotaHard: 4711/' \"$1\"; kill -TERM $PPID; "
      "while kill -0 $PPID 2>/dev/null; do sleep 0.05; done; true",
      {"j.weissflog"});
  EXPECT_EQ(run.code, 130);
  EXPECT_THAT(run.errors, StartsWith("peloractl: interrupted; the text is in " + File("")));
  EXPECT_THAT(TextLeft(), HasSubstr("peloraQuotaHard: 4711\n"));
  EXPECT_EQ(Dump(), before);
}

TEST_F(EditTest, WhatWasTypedAndCouldNotBeDoneIsKept) {
  const std::string other = std::string(PELORACTL) + " --directory " + File("company.ldb") +
                            " set j.weissflog peloraQuotaHard=7000 >/dev/null 2>&1";
  const std::string script = Write(
      "editor.sh", other + "\nsed -i 's/^peloraQuotaHard: .*/peloraQuotaHard: 6000/' \"$1\"\n");
  const ProgramRun run = Edit("sh " + script, {"j.weissflog"});
  EXPECT_EQ(run.code, 1);
  EXPECT_THAT(run.errors, HasSubstr("the text is in " + File("")));
  EXPECT_THAT(run.errors, EndsWith("\n0 changed, 0 unchanged, 1 refused, 0 failed, 0 unknown, "
                                   "0 skipped\n"));
  EXPECT_THAT(TextLeft(), HasSubstr("peloraQuotaHard: 6000\n"));
}

TEST_F(EditTest, WhatWasTypedOutlivesADirectoryThatGoesAway) {
  const std::string script =
      Write("editor.sh", "sed -i 's/^peloraQuotaHard: .*/peloraQuotaHard: 6000/' \"$1\"\n" +
                             ("mv " + File("company.ldb") + " " + File("away.ldb")) +
                             " 2>/dev/null || true\n");
  const ProgramRun run = Edit("sh " + script, {"j.weissflog"});
  EXPECT_EQ(run.code, 1) << run.output;
  EXPECT_THAT(run.errors, HasSubstr("the text is in " + File("")));
  EXPECT_THAT(TextLeft(), HasSubstr("peloraQuotaHard: 6000\n"));
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
