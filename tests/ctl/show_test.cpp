// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "tests/ctl/peloractl.h"

namespace pelora::testing {
namespace {

using nlohmann::json;
using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class ShowTest : public PeloractlTest {};

TEST_F(ShowTest, JsonHasEveryFieldOfTheClass) {
  const ProgramRun run = Ctl({"show", "--json", "j.weissflog"});
  EXPECT_EQ(run.code, 0) << run.errors;
  const json shown = json::parse(run.output);
  EXPECT_EQ(shown.at("class"), "user");
  EXPECT_EQ(shown.at("name"), "Jürgen Weißflog");
  const json& fields = shown.at("fields");
  EXPECT_EQ(fields.at("peloraAccount"), true);
  EXPECT_EQ(fields.at("accountType"), "system-administrator");
  EXPECT_EQ(fields.at("peloraQuotaHard"), 5000);
  EXPECT_EQ(fields.at("peloraResourceCapacity"), nullptr);
  EXPECT_EQ(fields.at("otherMailbox").size(), 2U);
  EXPECT_EQ(fields.at("peloraSendAsPrivilege"), json::array());
  EXPECT_EQ(fields.at("feature.imap"), "enabled");
  EXPECT_EQ(fields.at("feature.pop3"), "unset");
  EXPECT_EQ(fields.at("peloraUserArchiveServers"), json::array({"archive01", "archive02"}));
}

TEST_F(ShowTest, APersonSeesTabsGroupsLabelsAndValues) {
  const ProgramRun run = Ctl({"show", "j.weissflog"});
  EXPECT_EQ(run.code, 0) << run.errors;
  EXPECT_THAT(run.output, HasSubstr("Pelora Features"));
  EXPECT_THAT(run.output, ContainsRegex("Hard limit +peloraQuotaHard +5000"));
}

TEST_F(ShowTest, ObjectsAreFoundByWhatTheyAreCalled) {
  for (const char* name : {"J.WEISSFLOG", "J.Weissflog@linden-werke.example",
                           "juergen@linden-werke.example", "jürgen weißflog",
                           "cn=jürgen weißflog, ou=geschäftsleitung,ou=Linden-Werke Chemnitz,"
                           "dc=linden-werke,dc=example"}) {
    const ProgramRun run = Ctl({"show", "--json", name});
    EXPECT_EQ(run.code, 0) << name << run.errors;
    EXPECT_THAT(run.output, HasSubstr("\"name\":\"Jürgen Weißflog\"")) << name;
  }
}

TEST_F(ShowTest, EveryOneOfTheirNamesFindsObjects) {
  const std::string ldif = std::string("dn: ") + kTom +
                           "\nchangetype: modify\nreplace: userPrincipalName\n"
                           "userPrincipalName: tom@upn.example\n-\nreplace: mail\n"
                           "mail: tom@mail.example\n-\nreplace: otherMailbox\n"
                           "otherMailbox: tom@other.example\n-\n";
  ASSERT_EQ(
      RunProgram({"/usr/bin/ldbmodify", "-H", File("company.ldb")}, {{"PATH", "/usr/bin"}}, ldif)
          .code,
      0);
  for (const char* name :
       {"T.RICHTER", "TOM@upn.example", "TOM@mail.example", "TOM@other.example", "TOM RICHTER"}) {
    EXPECT_THAT(Ctl({"show", "--json", name}).output, HasSubstr("\"name\":\"Tom Richter\""))
        << name;
  }
  EXPECT_THAT(Ctl({"show", "--json", "LINDEN-WERKE CHEMNITZ"}).output,
              HasSubstr("\"class\":\"company\""));
}

TEST_F(ShowTest, InAFileASignOfEqualityIsAPartOfAName) {
  ASSERT_EQ(Ctl({"new", "contact", "one=two", "--in", kUnit}).code, 0);
  const ProgramRun run = Ctl({"show", "--json", "--from", "-"}, "one=two\n");
  EXPECT_EQ(run.code, 0) << run.errors;
  EXPECT_THAT(run.output, HasSubstr("\"name\":\"one=two\""));
  const ProgramRun applied = Ctl({"apply", "-"}, "object,peloraAccount\none=two,yes\n");
  EXPECT_THAT(applied.output, HasSubstr("changed\t"));
  EXPECT_EQ(Ctl({"show", "one=two"}).code, 2);
}

TEST_F(ShowTest, WhatCannotBeShownIsToldAndTheOthersAreShown) {
  const ProgramRun run = Ctl({"show", "--json", "nobody", "h.oender", "DC=linden-werke,DC=example",
                              "CN=Nobody,DC=linden-werke,DC=example"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.Lines().size(), 1U);
  EXPECT_THAT(run.errors, HasSubstr("nobody: no such object"));
  EXPECT_THAT(run.errors, HasSubstr("DC=linden-werke,DC=example: this object has no"));
  EXPECT_THAT(run.errors, HasSubstr("CN=Nobody,DC=linden-werke,DC=example: no such object"));
}

TEST_F(ShowTest, AnObjectNamedTwiceIsShownOnce) {
  const ProgramRun run = Ctl({"show", "--json", "h.oender", kHelga, "Helga Önder"});
  EXPECT_EQ(run.Lines().size(), 1U);
}

TEST_F(ShowTest, NamesInAFileAreTakenWithoutCommentsAndBlankLines) {
  const std::string names = "# people\n\nh.oender\r\n  t.richter \n";
  EXPECT_EQ(Ctl({"show", "--json", "--from", Write("names", names)}).Lines().size(), 2U);
  EXPECT_EQ(Ctl({"show", "--json", "--from", "-"}, names).Lines().size(), 2U);
}

TEST_F(ShowTest, SelectionsAreNarrowedByEachOption) {
  const std::string base = std::string("OU=IT,") + kUnit;
  const ProgramRun all = Ctl({"show", "--json", "--base", base});
  EXPECT_EQ(all.code, 0) << all.errors;
  const ProgramRun users = Ctl({"show", "--json", "--base", base, "--class", "user"});
  // The base itself is an organisational unit.
  EXPECT_EQ(all.Lines().size(), users.Lines().size() + 1);
  const ProgramRun one =
      Ctl({"show", "--json", "--base", base, "--class", "user", "--filter", "sn=Richter"});
  EXPECT_EQ(one.Lines().size(), 1U);
  const ProgramRun none = Ctl({"show", "--json", "--filter", "(sn=Nobody)"});
  EXPECT_EQ(none.code, 0);
  EXPECT_THAT(none.output, IsEmpty());
}

TEST_F(ShowTest, TogetherCountsWhatDiffers) {
  const ProgramRun run =
      Ctl({"show", "--together", "--json", "h.oender", "t.richter", "j.weissflog"});
  EXPECT_EQ(run.code, 0) << run.errors;
  EXPECT_EQ(run.Lines().size(), 1U);
  const json shown = json::parse(run.output);
  EXPECT_EQ(shown.at("count"), 3);
  EXPECT_EQ(shown.at("fields").at("peloraAccount"), true);
  const json& limits = shown.at("fields").at("peloraQuotaHard").at("mixed");
  EXPECT_EQ(limits.at(0).at("value"), nullptr);
  EXPECT_EQ(limits.at(0).at("count"), 2);
  EXPECT_EQ(limits.at(1).at("value"), 5000);
  const ProgramRun text = Ctl({"show", "--together", "h.oender", "t.richter"});
  EXPECT_THAT(text.output, ContainsRegex("mail01 \\(1\\)"));
}

TEST_F(ShowTest, TogetherOrdersEqualCountsByValue) {
  for (const auto& [who, limit] :
       {std::pair("h.oender", "300"), std::pair("t.richter", "20"), std::pair("k.boettger", "7")}) {
    ASSERT_EQ(
        Ctl({"set", who, "peloraQuotaOverride=yes", "peloraQuotaHard=" + std::string(limit)}).code,
        0);
  }
  const json shown = json::parse(
      Ctl({"show", "--together", "--json", "h.oender", "t.richter", "k.boettger"}).output);
  const json expected = {
      {{"value", 7}, {"count", 1}}, {{"value", 20}, {"count", 1}}, {{"value", 300}, {"count", 1}}};
  EXPECT_EQ(shown.at("fields").at("peloraQuotaHard").at("mixed"), expected);
}

TEST_F(ShowTest, ListsAreShownOneValueALine) {
  const ProgramRun run = Ctl({"show", "j.weissflog", "h.oender"});
  EXPECT_THAT(run.output, ContainsRegex("peloraUserArchiveServers +archive01\n +archive02\n"));
  // One object after the other.
  EXPECT_LT(run.output.find("Weißflog (user)"), run.output.find("Helga Önder (user)"));
}

TEST_F(ShowTest, TogetherHasTheFieldsOfAllClasses) {
  const json shown = json::parse(Ctl({"show", "--together", "--json", "h.oender", kUnit}).output);
  EXPECT_TRUE(shown.at("fields").contains("peloraAccount"));
  EXPECT_FALSE(shown.at("fields").contains("mail"));
}

}  // namespace
}  // namespace pelora::testing
