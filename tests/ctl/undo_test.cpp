// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "tests/ctl/peloractl.h"

namespace pelora::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class UndoTest : public PeloractlTest {};

TEST_F(UndoTest, WhatWasDoneIsTakenBack) {
  const nlohmann::json before = Fields("h.oender");
  const ProgramRun run = Ctl({"set", "--undo-file", File("undo"), "h.oender", "t.richter",
                              "peloraHidden=yes", "accountType=room", "mail=x@b.example"});
  ASSERT_EQ(run.code, 0) << run.output;
  const ProgramRun undone = Ctl({"undo", File("undo")});
  EXPECT_EQ(undone.code, 0) << undone.output;
  EXPECT_THAT(undone.errors, StartsWith("2 changed"));
  EXPECT_EQ(Fields("h.oender"), before);
  EXPECT_EQ(Stored(kHelga, "peloraHidden"), "");
  const ProgramRun again = Ctl({"undo", File("undo")});
  EXPECT_THAT(again.errors, StartsWith("0 changed, 2 unchanged"));
}

TEST_F(UndoTest, TheToolOfTheFileTakesItBackToo) {
  const std::string before = Dump();
  ASSERT_EQ(Ctl({"set", "--undo-file", File("undo"), "h.oender", "t.richter", "accountType=room",
                 "otherMailbox+=x@b.example", "peloraSendAsPrivilege+=j.weissflog"})
                .code,
            0);
  ASSERT_NE(Dump(), before);
  const ProgramRun undone = RunProgram(
      {"/usr/bin/ldbmodify", "-H", File("company.ldb"), File("undo")}, {{"PATH", "/usr/bin"}});
  EXPECT_EQ(undone.code, 0) << undone.errors;
  EXPECT_EQ(Dump(), before);
}

TEST_F(UndoTest, WhatWasDoneTwiceIsTakenBackLatestFirst) {
  const std::string before = Dump();
  ASSERT_EQ(Ctl({"new", "contact", "Ada", "--in", kUnit, "--undo-file", File("first")}).code, 0);
  ASSERT_EQ(Ctl({"set", "k.boettger", "peloraQuotaHard=3000", "--undo-file", File("second")}).code,
            0);
  std::string both = Read(File("first"));
  std::string later = Read(File("second"));
  later.replace(later.find("# change 0"), 10, "# change 1");
  const ProgramRun undone = Ctl({"undo", Write("both", both + later)});
  EXPECT_EQ(undone.code, 0) << undone.output;
  EXPECT_THAT(undone.Lines().front(), HasSubstr("CN=Klaus"));
  EXPECT_THAT(undone.Lines().back(), HasSubstr("CN=Ada"));
  EXPECT_EQ(Dump(), before);
}

TEST_F(UndoTest, AFileThatTakesNothingBackIsDone) {
  const std::string before = Dump();
  // Nothing of an interrupted run was sent, and it did not live to remove the file.
  const std::string text =
      std::string("# change 0\ndn: ") + kTom +
      "\nchangetype: modify\nadd: peloraHidden\npeloraHidden: 1\n-\n\n# withdrawn 0\n\n";
  for (const std::string& file : {text, std::string()}) {
    const ProgramRun run = Ctl({"undo", Write("undo", file)});
    EXPECT_EQ(run.code, 0) << run.errors;
    EXPECT_THAT(run.output, IsEmpty());
    EXPECT_THAT(run.errors, StartsWith("0 changed, 0 unchanged"));
  }
  EXPECT_EQ(Dump(), before);
}

TEST_F(UndoTest, AFileThatIsThereIsNotTaken) {
  const ProgramRun run =
      Ctl({"set", "--undo-file", Write("undo", "precious"), "h.oender", "peloraHidden=yes"});
  EXPECT_EQ(run.code, 2);
  EXPECT_EQ(Read(File("undo")), "precious");
  EXPECT_EQ(Stored(kHelga, "peloraHidden"), "");
}

TEST_F(UndoTest, WhatSomebodyChangedSinceIsLeftAlone) {
  ASSERT_EQ(Ctl({"set", "--undo-file", File("undo"), "k.boettger", "peloraQuotaHard=3000"}).code,
            0);
  ASSERT_EQ(Ctl({"set", "k.boettger", "peloraQuotaHard=4000"}).code, 0);
  const ProgramRun run = Ctl({"undo", File("undo")});
  EXPECT_EQ(run.code, 1);
  EXPECT_THAT(run.output, StartsWith("refused\t"));
  EXPECT_THAT(run.output, HasSubstr("4000"));
  EXPECT_EQ(Fields("k.boettger").at("peloraQuotaHard"), 4000);
}

TEST_F(UndoTest, AListToWhichSomebodyAddedSinceIsLeftAlone) {
  const auto tool = [this](const std::string& change) {
    return RunProgram(
               {"/usr/bin/ldbmodify", "-H", File("company.ldb"),
                Write("change", std::string("dn: ") + kTom + "\nchangetype: modify\n" + change)},
               {{"PATH", "/usr/bin"}})
        .code;
  };
  ASSERT_EQ(Ctl({"set", "t.richter", "otherMailbox=a@b.example;b@b.example"}).code, 0);
  const std::string before = Dump();
  ASSERT_EQ(
      Ctl({"set", "t.richter", "otherMailbox+=mine@b.example", "otherMailbox-=a@b.example",
           "feature.imap=enabled", "peloraSendAsPrivilege+=h.oender", "--undo-file", File("undo")})
          .code,
      0);
  ASSERT_EQ(tool("add: otherMailbox\notherMailbox: theirs@b.example\n"), 0);
  const std::string since = Dump();
  for (const bool is_dry_run : {true, false}) {
    std::vector<std::string> arguments = {"undo", File("undo")};
    if (is_dry_run) arguments.emplace_back("--dry-run");
    const ProgramRun run = Ctl(arguments);
    EXPECT_EQ(run.code, 1);
    const std::string& lines = is_dry_run ? run.errors : run.output;
    EXPECT_THAT(lines, StartsWith("refused\t"));
    EXPECT_THAT(lines, HasSubstr("is b@b.example; mine@b.example; theirs@b.example now"));
    EXPECT_EQ(Dump(), since);
  }
  // In another order, and in other letters, it is the same list.
  ASSERT_EQ(tool("replace: otherMailbox\notherMailbox: B@b.example\notherMailbox: "
                 "mine@b.example\n"),
            0);
  const ProgramRun undone = Ctl({"undo", File("undo")});
  EXPECT_EQ(undone.code, 0) << undone.output;
  EXPECT_THAT(undone.output, StartsWith("changed\t"));
  EXPECT_EQ(Stored(kTom, "otherMailbox"), "B@b.example\na@b.example");
  EXPECT_THAT(Ctl({"undo", File("undo")}).output, StartsWith("unchanged\t"));
  ASSERT_EQ(tool("replace: otherMailbox\notherMailbox: a@b.example\notherMailbox: "
                 "b@b.example\n"),
            0);
  EXPECT_EQ(Dump(), before);
}

TEST_F(UndoTest, ObjectsThatWereMadeAreDeletedWhileTheyAreAsTheyWereMade) {
  const std::string dn = std::string("CN=Ada Larsen,") + kUnit;
  ASSERT_EQ(Ctl({"new", "--undo-file", File("undo"), "contact", "Ada Larsen", "--in", kUnit}).code,
            0);
  const std::string made = Dump();
  ASSERT_EQ(Ctl({"undo", File("undo"), "--undo-file", File("back")}).code, 0);
  EXPECT_EQ(Stored(dn, "cn"), "no such object");
  // What took it back is taken back too, and is done only once.
  for (const char* result : {"changed\t", "unchanged\t"}) {
    EXPECT_THAT(Ctl({"undo", File("back")}).output, StartsWith(result));
  }
  EXPECT_EQ(Dump(), made);
  ASSERT_EQ(Ctl({"undo", File("undo")}).code, 0);
  ASSERT_EQ(
      Ctl({"new", "--undo-file", File("second"), "contact", "Ada Larsen", "--in", kUnit}).code, 0);
  ASSERT_EQ(Ctl({"set", dn, "peloraHidden=yes"}).code, 0);
  EXPECT_EQ(Ctl({"undo", File("second")}).code, 1);
  EXPECT_EQ(Stored(dn, "peloraHidden"), "1");
}

TEST_F(UndoTest, ADryRunMakesNoUndoFile) {
  EXPECT_EQ(
      Ctl({"set", "--dry-run", "--undo-file", File("undo"), "h.oender", "peloraHidden=yes"}).code,
      0);
  EXPECT_THAT(Read(File("undo")), IsEmpty());
}

}  // namespace
}  // namespace pelora::testing
