// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include <algorithm>
#include <sstream>

#include "tests/ctl/peloractl.h"

namespace pelora::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

std::vector<std::string> SortedLines(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  std::ranges::sort(lines);
  return lines;
}

class NewTest : public PeloractlTest {
 protected:
  [[nodiscard]] ProgramRun New(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {"new", "--in", kUnit});
    return Ctl(arguments);
  }
  [[nodiscard]] static std::string Dn(const std::string& name) {
    return "CN=" + name + "," + kUnit;
  }
};

TEST_F(NewTest, AUserIsMadeWithItsSettings) {
  const ProgramRun run =
      New({"user", "Ada Larsen", "givenName=Ada", "sn=Larsen", "sAMAccountName=ada",
           "peloraAccount=yes", "mail=ada@linden-werke.example", "peloraUserServer=mail02",
           "displayName=Ada L."});
  EXPECT_EQ(run.code, 0) << run.output;
  EXPECT_EQ(run.output, "changed\t" + Dn("Ada Larsen") + "\n");
  EXPECT_EQ(Stored(Dn("Ada Larsen"), "sAMAccountName"), "ada");
  EXPECT_EQ(Stored(Dn("Ada Larsen"), "userPrincipalName"), "ada@linden-werke.example");
  EXPECT_EQ(Stored(Dn("Ada Larsen"), "displayName"), "Ada L.");
  EXPECT_EQ(Stored(Dn("Ada Larsen"), "peloraUserServer"), "mail02");
  EXPECT_EQ(Fields("ada").at("mail"), "ada@linden-werke.example");
}

TEST_F(NewTest, ALogonNameThatCannotBeSuggestedIsRefused) {
  const ProgramRun run = New({"user", "Ada Larsen"});
  EXPECT_EQ(run.code, 1);
  EXPECT_THAT(run.output, StartsWith("refused\t" + Dn("Ada Larsen") + "\tsAMAccountName: "));
  EXPECT_THAT(New({"user", "Ada Larsen", "sAMAccountName=a/b"}).output,
              HasSubstr("\tsAMAccountName: "));
  // What is wrong with the name is no matter of the logon name.
  EXPECT_THAT(New({"user", std::string(65, 'a')}).output, HasSubstr("\tThe name has more than "));
}

TEST_F(NewTest, APageThatIsNotCompleteIsRefused) {
  const ProgramRun run = New({"user", "Ada Larsen", "sAMAccountName=ada", "peloraAccount=yes"});
  EXPECT_EQ(run.code, 1);
  EXPECT_THAT(run.output, HasSubstr("\tmail: "));
  EXPECT_EQ(Stored(Dn("Ada Larsen"), "cn"), "no such object");
}

TEST_F(NewTest, AFieldOfAPageThatIsOffSaysWhatTurnsItOn) {
  const ProgramRun run = New({"contact", "Ada", "mail=ada@b.example"});
  EXPECT_THAT(run.output,
              HasSubstr("mail: it is disabled; set it together with peloraAccount=yes"));
}

TEST_F(NewTest, WhatEnablesMayStandBehindWhatItEnables) {
  const ProgramRun run =
      New({"user", "Ada", "sAMAccountName=ada", "peloraResourceCapacity=5", "peloraHidden=yes",
           "mail=ada@b.example", "accountType=room", "peloraAccount=yes"});
  EXPECT_EQ(run.code, 0) << run.output;
  EXPECT_EQ(Stored(Dn("Ada"), "peloraHidden"), "1");
  EXPECT_EQ(Stored(Dn("Ada"), "peloraResourceType"), "room");
  EXPECT_EQ(Stored(Dn("Ada"), "peloraResourceCapacity"), "5");
}

TEST_F(NewTest, ADryRunPrintsLdifThatMakesTheSameObject) {
  const std::vector<std::string> asked = {"user",
                                          "Eva, \"X\" Larsen",
                                          "givenName=Eva",
                                          "sn=Larsen",
                                          "sAMAccountName=eva",
                                          "peloraAccount=yes",
                                          "mail=eva@linden-werke.example"};
  std::vector<std::string> rehearsed = asked;
  rehearsed.push_back("--dry-run");
  const ProgramRun dry = New(rehearsed);
  ASSERT_EQ(dry.code, 0) << dry.errors;
  const std::vector<std::string> file = {"-H", File("company.ldb")};
  const ProgramRun applied =
      RunProgram({"/usr/bin/ldbmodify", file[0], file[1]}, {{"PATH", "/usr/bin"}}, dry.output);
  ASSERT_EQ(applied.code, 0) << applied.errors << dry.output;
  const auto stored = [this] { return SortedLines(Dump()); };
  const std::vector<std::string> by_the_tool = stored();
  EXPECT_THAT(by_the_tool, ::testing::Contains("objectClass: organizationalPerson"));
  const std::string name = R"(CN=Eva\, \"X\" Larsen,)" + std::string(kUnit);
  const ProgramRun removed =
      RunProgram({"/usr/bin/ldbdel", file[0], file[1], name}, {{"PATH", "/usr/bin"}}, "");
  ASSERT_EQ(removed.code, 0) << removed.errors << removed.output;
  EXPECT_EQ(New(asked).code, 0);
  EXPECT_EQ(stored(), by_the_tool);
}

TEST_F(NewTest, GroupsHaveTheirType) {
  EXPECT_EQ(New({"group", "Optics", "groupType=universal-distribution"}).code, 0);
  EXPECT_EQ(Stored(Dn("Optics"), "groupType"), "8");
  EXPECT_EQ(Stored(Dn("Optics"), "sAMAccountName"), "Optics");
  EXPECT_EQ(New({"group", "Works"}).code, 0);
  EXPECT_EQ(Stored(Dn("Works"), "groupType"), "-2147483646");
  EXPECT_THAT(New({"group", "Odd", "groupType=galactic"}).output, HasSubstr("groupType: "));
}

TEST_F(NewTest, EveryScopeMayBeOfEitherKind) {
  const std::vector<std::pair<std::string, std::uint32_t>> scopes = {
      {"global", 2}, {"domain-local", 4}, {"universal", 8}};
  constexpr std::uint32_t kSecurity = 0x80000000;
  for (const auto& [scope, bits] : scopes) {
    for (const char* kind : {"", "-security", "-distribution"}) {
      const std::string type = scope + kind;
      ASSERT_EQ(New({"group", type, "groupType=" + type}).code, 0) << type;
      const bool is_security = std::string(kind) != "-distribution";
      const std::uint32_t stored = is_security ? bits | kSecurity : bits;
      EXPECT_EQ(Stored(Dn(type), "groupType"), std::to_string(static_cast<std::int32_t>(stored)));
    }
  }
}

TEST_F(NewTest, AComputersNameEndsWithItsSign) {
  EXPECT_EQ(New({"server", "mail09", "peloraAccount=yes", "peloraHostAddress=192.0.2.9"}).code, 0);
  EXPECT_EQ(Stored(Dn("mail09"), "sAMAccountName"), "MAIL09$");
  EXPECT_EQ(Stored(Dn("mail09"), "peloraHttpPort"), "236");
  EXPECT_EQ(New({"server", "mail10", "sAMAccountName=m10$"}).code, 0);
  EXPECT_EQ(Stored(Dn("mail10"), "sAMAccountName"), "m10$");
  EXPECT_EQ(New({"server", "mail11$"}).code, 0);
  EXPECT_EQ(Stored(Dn("mail11$"), "sAMAccountName"), "MAIL11$");
}

TEST_F(NewTest, ListsAreMadeByTheirOwnWizards) {
  const ProgramRun run = New({"addresslist", "Everybody", "peloraAccount=yes",
                              "peloraFilter=(mail=*)", "peloraBase=" + std::string(kUnit)});
  EXPECT_EQ(run.code, 0) << run.output;
  EXPECT_EQ(Stored(Dn("Everybody"), "peloraFilter"), "(mail=*)");
  EXPECT_EQ(Stored(Dn("Everybody"), "peloraBase"), kUnit);
  EXPECT_EQ(New({"dynamiclist", "Staff", "peloraAccount=yes"}).code, 1);
  EXPECT_EQ(New({"company", "Linden Nord"}).code, 0);
  EXPECT_EQ(Stored(std::string("OU=Linden Nord,") + kUnit, "ou"), "Linden Nord");
}

TEST_F(NewTest, AContainerWithASlashInItsNameIsChosenWhole) {
  const ProgramRun run = New({"addresslist", "Labs", "peloraAccount=yes", "peloraFilter=(mail=*)",
                              "peloraBase=" + std::string(sample::kLaboratory)});
  EXPECT_EQ(run.code, 0) << run.output;
  EXPECT_EQ(Stored(Dn("Labs"), "peloraBase"), sample::kLaboratory);
  EXPECT_EQ(Ctl({"set", kUnit, "peloraViewPrivilege=" + std::string(sample::kLaboratory)}).code, 0);
  EXPECT_EQ(Stored(kUnit, "peloraViewPrivilege"), sample::kLaboratory);
}

TEST_F(NewTest, FieldsThatTheClassHasNotAreRefused) {
  EXPECT_THAT(New({"contact", "Ada", "sAMAccountName=ada"}).output, HasSubstr("sAMAccountName: "));
  EXPECT_THAT(New({"contact", "Ada", "peloraHttpPort=1"}).output, HasSubstr("peloraHttpPort: "));
}

TEST_F(NewTest, AFileHoldsNoPasswords) {
  const ProgramRun run = Ctl(
      {"new", "user", "Ada", "--in", kUnit, "sAMAccountName=ada", "--password-stdin"}, "secret\n");
  EXPECT_EQ(run.code, 2);
  EXPECT_EQ(Stored(Dn("Ada"), "cn"), "no such object");
}

TEST_F(NewTest, NamesThatAreTakenFailAndContainersThatAreNotThereAreRefused) {
  EXPECT_EQ(New({"contact", "Ada"}).code, 0);
  EXPECT_THAT(New({"contact", "Ada"}).output, StartsWith("failed\t"));
  const ProgramRun run =
      Ctl({"new", "contact", "Ada", "--in", "OU=Nowhere,DC=linden-werke,DC=example"});
  EXPECT_THAT(run.output, StartsWith("refused\t"));
}

TEST_F(NewTest, ADryRunPrintsTheAddition) {
  const ProgramRun run = New({"--dry-run", "contact", "Ada"});
  EXPECT_EQ(run.code, 0) << run.errors;
  EXPECT_THAT(run.output, HasSubstr("changetype: add"));
  EXPECT_EQ(Stored(Dn("Ada"), "cn"), "no such object");
}

}  // namespace
}  // namespace pelora::testing
