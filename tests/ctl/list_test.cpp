// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include <algorithm>

#include "hosts/ctl/text/csv_reader.h"
#include "tests/ctl/peloractl.h"

namespace pelora::testing {
namespace {

using nlohmann::json;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

class ListTest : public PeloractlTest {};

std::vector<std::vector<std::string>> Rows(const std::string& csv) {
  ctl::CsvReader reader(csv);
  std::vector<std::vector<std::string>> rows;
  for (std::vector<std::string> row; reader.Next(row);) rows.push_back(row);
  EXPECT_FALSE(reader.fault());
  return rows;
}

TEST_F(ListTest, ObjectsWithAnAccountAreListedByName) {
  const ProgramRun run = Ctl({"list", "--csv"});
  EXPECT_EQ(run.code, 0) << run.errors;
  EXPECT_THAT(run.output, StartsWith("dn,name,class,mail,accountType,peloraUserServer,"
                                     "peloraQuotaHard\r\n"));
  const auto rows = Rows(run.output);
  EXPECT_TRUE(std::is_sorted(rows.begin() + 1, rows.end(), [](const auto& left, const auto& right) {
    return std::tolower(static_cast<unsigned char>(left[1][0])) <
           std::tolower(static_cast<unsigned char>(right[1][0]));
  }));
  EXPECT_THAT(run.output, Not(HasSubstr("Beograd,DC=linden-werke,DC=example\",Linden Servis")));
  EXPECT_THAT(Ctl({"list", "--csv", "--all"}).output, HasSubstr("Linden Servis Beograd,company"));
}

TEST_F(ListTest, OneClassIsListedWithoutTheOthers) {
  for (const char* word :
       {"user", "contact", "group", "addresslist", "dynamiclist", "company", "server"}) {
    const ProgramRun run = Ctl({"list", word, "--all", "--json", "--columns", "class,name"});
    EXPECT_EQ(run.code, 0) << run.errors;
    ASSERT_FALSE(run.Lines().empty()) << word;
    for (const std::string& line : run.Lines()) EXPECT_EQ(json::parse(line).at("class"), word);
  }
}

TEST_F(ListTest, ColumnsAreChosen) {
  const ProgramRun run = Ctl({"list", "user", "--columns", "NAME, otherMailbox ,peloraquotahard,dn",
                              "--filter", "(sAMAccountName=j.weissflog)", "--csv"});
  const auto rows = Rows(run.output);
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_THAT(rows[0], ElementsAre("name", "otherMailbox", "peloraQuotaHard", "dn"));
  EXPECT_EQ(rows[1][1], "juergen@linden-werke.example;geschaeftsleitung@linden-werke.example");
  EXPECT_EQ(rows[1][2], "5000");
}

TEST_F(ListTest, AColumnIsNamedOnce) {
  for (const char* format : {"--csv", "--json", "--quiet"}) {
    const ProgramRun run = Ctl({"list", "user", format, "--columns", "name,MAIL,dn,mail"});
    EXPECT_EQ(run.code, 2) << run.output;
    EXPECT_EQ(run.output, "");
    EXPECT_THAT(run.errors, HasSubstr("the column \"mail\" is named twice"));
  }
  EXPECT_EQ(Ctl({"list", "user", "--columns", "dn,name,DN"}).code, 2);
}

TEST_F(ListTest, JsonIsKeyedByColumn) {
  const ProgramRun run = Ctl({"list", "server", "--json", "--columns", "name,peloraHttpPort,mail"});
  const json first = json::parse(run.Lines().front());
  EXPECT_EQ(first, (json{{"name", "archive01"}, {"peloraHttpPort", nullptr}, {"mail", nullptr}}));
}

TEST_F(ListTest, TheTableForAPersonLeavesTheNameInTheDirectoryOut) {
  const ProgramRun run = Ctl({"list", "user"});
  EXPECT_THAT(run.output, StartsWith("name"));
  EXPECT_THAT(run.output, Not(HasSubstr("DC=linden-werke")));
  EXPECT_THAT(Ctl({"list", "user", "--columns", "dn"}).output, HasSubstr("DC=linden-werke"));
  // Signs of East Asia take two columns each.
  EXPECT_THAT(run.output, HasSubstr("\nΓιώργος Νικολαΐδης  user"));
  EXPECT_THAT(run.output, HasSubstr("\n林田 美咲           user"));
  // Marks take none, where they stand by themselves.
  ASSERT_EQ(Ctl({"new", "contact", "Zoe\xCC\x88 \xE2\x98\x95", "--in", kUnit}).code, 0);
  const ProgramRun marks = Ctl({"list", "contact", "--all", "--columns", "name,class"});
  EXPECT_THAT(marks.output, HasSubstr("\nZoe\xCC\x88 \xE2\x98\x95                 contact"));
}

TEST_F(ListTest, AnObjectThatNobodyGaveANameHasItsOwn) {
  const ProgramRun added =
      RunProgram({"/usr/bin/ldbmodify", "-H", File("company.ldb"),
                  Write("add", "dn: CN=Lee\\, Ann," + std::string(kUnit) +
                                   "\nchangetype: add\nobjectClass: contact\ncn: Lee, Ann\n")},
                 {{"PATH", "/usr/bin"}});
  ASSERT_EQ(added.code, 0) << added.errors;
  const ProgramRun run =
      Ctl({"list", "contact", "--all", "--csv", "--columns", "name,mail", "--filter", "(cn=Lee*)"});
  EXPECT_THAT(run.output, HasSubstr("\n\"Lee, Ann\","));
}

TEST_F(ListTest, ABaseCountsItself) {
  const ProgramRun run = Ctl({"list", "--json", "--columns", "dn", "--base", kUnit, "company"});
  EXPECT_THAT(run.output, HasSubstr(kUnit));
}

}  // namespace
}  // namespace pelora::testing
