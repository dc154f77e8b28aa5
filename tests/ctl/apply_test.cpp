// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "tests/ctl/peloractl.h"

namespace pelora::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class ApplyTest : public PeloractlTest {
 protected:
  [[nodiscard]] ProgramRun Apply(const std::string& table,
                                 std::vector<std::string> options = {}) const {
    options.insert(options.begin(), {"apply", Write("table.csv", table)});
    return Ctl(options);
  }
};

TEST_F(ApplyTest, EachRowChangesAnObject) {
  const ProgramRun run = Apply(
      "object,peloraHidden,otherMailbox+\r\n"
      "h.oender,yes,a@b.example;c@d.example\r\n"
      "t.richter,,\r\n");
  EXPECT_EQ(run.code, 0) << run.errors;
  EXPECT_THAT(run.Lines(), ElementsAre(StartsWith("changed\t"), StartsWith("unchanged\t")));
  EXPECT_EQ(Stored(kHelga, "otherMailbox"), "a@b.example\nc@d.example");
}

TEST_F(ApplyTest, ColumnsSetAddToAndRemoveFromLists) {
  ASSERT_EQ(Ctl({"set", "h.oender", "otherMailbox=a@b.example;c@d.example"}).code, 0);
  const ProgramRun run = Apply(
      "object,otherMailbox-,otherMailbox+,feature.pop3\n"
      "h.oender,a@b.example,e@f.example,disabled\n");
  EXPECT_EQ(run.code, 0) << run.output << run.errors;
  EXPECT_EQ(Stored(kHelga, "otherMailbox"), "c@d.example\ne@f.example");
  EXPECT_EQ(Fields("h.oender").at("feature.pop3"), "disabled");
}

TEST_F(ApplyTest, TablesOfOtherProgramsAreRead) {
  EXPECT_EQ(Apply("\xEF\xBB\xBFobject;peloraHidden\nh.oender;yes\n\n;\n").code, 0);
  EXPECT_EQ(Stored(kHelga, "peloraHidden"), "1");
  EXPECT_EQ(Ctl({"apply", "-"}, "DN , PELORAHIDDEN\n\"" + std::string(kHelga) + "\",no").code, 0);
  EXPECT_EQ(Stored(kHelga, "peloraHidden"), "0");
}

TEST_F(ApplyTest, WhatListPrintsCanBeApplied) {
  const ProgramRun listed = Ctl({"list", "--all", "--csv"});
  const std::string before = Dump();
  const ProgramRun run = Apply(listed.output);
  EXPECT_EQ(run.code, 0) << run.output;
  EXPECT_THAT(run.errors, StartsWith("0 changed, "));
  EXPECT_EQ(Dump(), before);
}

TEST_F(ApplyTest, WhatIsNoTextIsListedAsTextAndStaysAsItIs) {
  ASSERT_EQ(RunProgram({"/usr/bin/ldbmodify", "-H", File("company.ldb")}, {{"PATH", "/usr/bin"}},
                       std::string("dn: ") + kTom +
                           "\nchangetype: modify\nadd: "
                           "peloraUserArchiveServers\npeloraUserArchiveServers:: Zv9m\n-\n"
                           "replace: peloraUserServer\npeloraUserServer:: Zv9m\n")
                .code,
            0);
  const std::string before = Dump();
  const ProgramRun listed =
      Ctl({"list", "user", "--csv", "--columns", "dn,peloraUserArchiveServers,peloraUserServer"});
  EXPECT_THAT(listed.output, HasSubstr("\",f\\\\xFFf,f\\xFFf\r\n"));
  const ProgramRun run = Apply(listed.output);
  EXPECT_EQ(run.code, 0) << run.output;
  EXPECT_EQ(Dump(), before);
}

TEST_F(ApplyTest, EmptyCellsClearWhenAsked) {
  const std::string table = "object,peloraQuotaHard,otherMailbox\nj.weissflog,,\n";
  EXPECT_THAT(Apply(table).output, StartsWith("unchanged\t"));
  EXPECT_THAT(Apply(table, {"--empty", "clears"}).output, StartsWith("changed\t"));
  EXPECT_EQ(Fields("j.weissflog").at("peloraQuotaHard"), nullptr);
  EXPECT_TRUE(Fields("j.weissflog").at("otherMailbox").empty());
}

TEST_F(ApplyTest, FaultsAreToldWithTheirLineAndNothingIsDone) {
  const std::string good = "object,peloraHidden\nh.oender,yes\n";
  const std::vector<std::pair<std::string, std::string>> faults = {
      {"", "line 1: "},
      {"peloraHidden\nyes\n", "line 1: there is no column \"dn\" or \"object\""},
      {"\nobject,peloraNothing\nh.oender,1\n", "line 2: there is no column \"peloraNothing\""},
      {"object,peloraHidden,PeloraHidden\nh.oender,1,1\n", "\"PeloraHidden\" is given twice"},
      {"object,dn,peloraHidden\nh.oender,x,1\n", "\"dn\" is given twice"},
      {"object,otherMailbox,otherMailbox+\nh.oender,x,y\n", "given twice"},
      {"object,peloraQuotaHard+\nh.oender,1\n", "there is no column \"peloraQuotaHard+\""},
      {good + "t.richter\n", "line 3: "},
      {good + "t.richter,yes,no\n", "line 3: "},
      {good + ",yes\n", "line 3: no object is named"},
      {good + "t.richter,\"yes\n", "line 3: "},
      {good + "t.richter,\"yes\"no\n", "line 3: "},
      {good + "t.richter,y\"es\n", "line 3: "},
      {good + "t.richter,\xFF\n", "line 3: this is not UTF-8"},
      {good + "\n\"H.OENDER\",no\n", "line 4: H.OENDER is named on line 2 already"},
      {good + "\"" + std::string(kHelga) + "\",no\n", "line 3: "},
  };
  const std::string before = Dump();
  for (const auto& [table, fault] : faults) {
    const ProgramRun run = Apply(table);
    EXPECT_EQ(run.code, 2) << table;
    EXPECT_THAT(run.errors, HasSubstr(fault));
    EXPECT_THAT(run.output, IsEmpty());
  }
  EXPECT_EQ(Dump(), before);
}

TEST_F(ApplyTest, ARetryTakesWhatIsNotDone) {
  const std::string table = "object,peloraHidden\nh.oender,yes\nnobody,yes\nmail01,yes\n";
  const ProgramRun first = Apply(table, {"--report", File("report")});
  EXPECT_EQ(first.code, 1);
  const ProgramRun again = Apply(table, {"--retry", File("report")});
  EXPECT_THAT(again.Lines(),
              ElementsAre(StartsWith("refused\tnobody"), StartsWith("refused\tCN=mail01")));
  EXPECT_EQ(Apply(table, {"--retry", Write("wrong", "no report\nat all\n")}).code, 2);
}

TEST_F(ApplyTest, StandardInputIsOneThing) {
  const ProgramRun run = Ctl({"apply", "-", "--retry", "-"}, "object,peloraHidden\nh.oender,yes\n");
  EXPECT_EQ(run.code, 2);
  EXPECT_THAT(run.errors, HasSubstr("standard input cannot be both"));
  EXPECT_EQ(Stored(kHelga, "peloraHidden"), "");
  const std::string report = "{\"result\":\"changed\",\"dn\":\"" + std::string(kHelga) + "\"}\n";
  const std::string table = Write("table.csv", "object,peloraHidden\nh.oender,yes\n");
  EXPECT_THAT(Ctl({"apply", table, "--retry", "-"}, report).output, IsEmpty());
}

TEST_F(ApplyTest, ARetryTakesWhatWasOnlyRehearsed) {
  ASSERT_EQ(Ctl({"set", "t.richter", "peloraHidden=yes"}).code, 0);
  const std::string table = "object,peloraHidden\nh.oender,yes\nt.richter,yes\n";
  EXPECT_EQ(Apply(table, {"--dry-run", "--report", File("report")}).code, 0);
  EXPECT_THAT(Read(File("report")), HasSubstr("\"result\":\"changed\""));
  EXPECT_THAT(Apply(table, {"--retry", File("report")}).Lines(),
              ElementsAre(std::string("changed\t") + kHelga));
}

TEST_F(ApplyTest, WhatHasNoEndIsRefused) {
  const std::string before = Dump();
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{"apply", "/dev/zero"},
        {"apply", Write("table.csv", "object\n"), "--retry", "/dev/zero"},
        {"set", "--from", "/dev/zero", "peloraHidden=yes"},
        {"undo", "/dev/zero"}}) {
    const ProgramRun run = Ctl(arguments);
    EXPECT_EQ(run.code, 2) << run.output;
    EXPECT_THAT(run.errors, StartsWith("peloractl: "));
    EXPECT_THAT(run.errors, HasSubstr("/dev/zero"));
    EXPECT_EQ(run.errors.find('\n'), run.errors.size() - 1) << run.errors;
  }
  EXPECT_EQ(Dump(), before);
}

TEST_F(ApplyTest, AReportIsNotWrittenOverWhatIsRead) {
  const std::string table = "object,peloraHidden\nh.oender,yes\nnobody,yes\n";
  EXPECT_EQ(Apply(table, {"--report", File("report")}).code, 1);
  const std::string report = Read(File("report"));
  const ProgramRun again = Apply(table, {"--retry", File("report"), "--report", File("report")});
  EXPECT_EQ(again.code, 2);
  EXPECT_THAT(again.errors, HasSubstr("cannot be written over what is read"));
  EXPECT_EQ(Read(File("report")), report);
  EXPECT_EQ(Apply(table, {"--report", File("table.csv")}).code, 2);
  EXPECT_EQ(Read(File("table.csv")), table);
  const std::string before = Dump();
  EXPECT_EQ(Apply(table, {"--report", File("company.ldb")}).code, 2);
  environment["PELORA_DIRECTORY"] = File("company.ldb");
  EXPECT_EQ(Bare({"apply", Write("table.csv", table), "--report", File("company.ldb")}).code, 2);
  EXPECT_EQ(Dump(), before);
  EXPECT_EQ(Apply(table, {"--report", File("both"), "--undo-file", File("both")}).code, 2);
  EXPECT_EQ(Ctl({"set", "--from", Write("names", "h.oender\n"), "--report", File("names"),
                 "peloraHidden=no"})
                .code,
            2);
  EXPECT_EQ(Read(File("names")), "h.oender\n");
}

TEST_F(ApplyTest, FieldsThatAClassHasNotAreRefusedRowByRow) {
  const ProgramRun run =
      Apply("object,peloraHttpPort,peloraHidden\nmail02,1236,\nh.oender,1236,yes\n");
  EXPECT_THAT(run.Lines(), ElementsAre(StartsWith("changed\t"), StartsWith("refused\t")));
  EXPECT_EQ(Stored(kHelga, "peloraHidden"), "");
}

}  // namespace
}  // namespace pelora::testing
