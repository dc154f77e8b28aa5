// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include <array>

#include "hosts/ldap/ldb_store.h"
#include "tests/ctl/peloractl.h"

namespace pelora::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr const char* kStefan =
    "CN=Stefan Ebert,OU=Vertrieb,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
constexpr const char* kSofie =
    "CN=Sofie Albrecht,OU=IT,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
constexpr const char* kNobody = "CN=Nobody,DC=linden-werke,DC=example";
constexpr const char* kGone =
    "CN=Uta Alt\\0ADEL:5d0e8c1a-7a54-4c0e-9d7e-3f1f5a2b6c90,CN=Deleted "
    "Objects,DC=linden-werke,DC=example";

class CheckCommand : public PeloractlTest {
 protected:
  /// Puts values into the file past the tabs.
  void Put(const std::string& dn, const std::string& attribute,
           const ldap::AttributeValues& values) {
    std::unique_ptr<ldap::IDirectoryStore> store;
    ASSERT_TRUE(ldap::OpenLdbStore(File("company.ldb"), {}, store).Ok());
    const std::array<ldap::Modification, 1> change = {
        {{ldap::Modification::Operation::kReplace, attribute, values}}};
    const ldap::StoreStatus status = store->Modify(dn, change);
    ASSERT_TRUE(status.Ok()) << status.text;
  }
};

TEST_F(CheckCommand, PrintsALineForEachFinding) {
  const ProgramRun run =
      Ctl({"check", "--rule", "feature-conflict", "--rule", "reference-dangling"});
  EXPECT_EQ(run.code, 1);
  EXPECT_THAT(run.Lines(), ElementsAre(std::string("reference-dangling\t") + kStefan +
                                           "\tpeloraSendAsPrivilege: " + kGone + " was deleted",
                                       std::string("feature-conflict\t") + kSofie +
                                           "\timap is both enabled and disabled"));
  EXPECT_EQ(run.errors, "");
}

TEST_F(CheckCommand, PrintsJson) {
  Put(kHelga, "otherMailbox", {"shared@linden-werke.example"});
  Put(kTom, "otherMailbox", {"shared@linden-werke.example"});
  const ProgramRun run = Ctl({"check", "--json", "--rule", "address-duplicate"});
  EXPECT_EQ(run.code, 1);
  ASSERT_EQ(run.Lines().size(), 2U);
  const auto finding = nlohmann::json::parse(run.Lines()[0]);
  EXPECT_EQ(finding.size(), 4U);
  EXPECT_EQ(finding.at("rule"), "address-duplicate");
  EXPECT_EQ(finding.at("dn"), kHelga);
  EXPECT_EQ(finding.at("others"), nlohmann::json::array({kTom}));
  EXPECT_TRUE(finding.at("message").is_string());
}

TEST_F(CheckCommand, HasNothingToOthersWhereThereAreNone) {
  const ProgramRun run = Ctl({"check", "--json", "--rule", "feature-conflict"});
  EXPECT_EQ(nlohmann::json::parse(run.output).at("others"), nlohmann::json::array());
}

TEST_F(CheckCommand, FindsNothingWithCodeZero) {
  const ProgramRun run = Ctl({"check", "--rule", "quota-order"});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.output + run.errors, "");
}

TEST_F(CheckCommand, LooksBelowABaseThatCountsItself) {
  EXPECT_EQ(Ctl({"check", "--rule", "feature-conflict", "--base", kSofie}).code, 1);
  EXPECT_EQ(Ctl({"check", "--rule", "feature-conflict", "--base", kTom}).code, 0);
  EXPECT_EQ(Ctl({"check", "--base", kNobody}).code, 2);
  EXPECT_EQ(Ctl({"check", "--base", "no name"}).code, 2);
}

TEST_F(CheckCommand, RefusesRulesThatThereAreNotAndObjects) {
  const ProgramRun run = Ctl({"check", "--rule", "no-such-rule"});
  EXPECT_EQ(run.code, 2);
  EXPECT_EQ(run.output, "");
  EXPECT_THAT(run.errors, HasSubstr("no-such-rule"));
  EXPECT_EQ(Ctl({"check", kTom}).code, 2);
}

TEST_F(CheckCommand, OptionsOfChangesNeedAFix) {
  for (const std::vector<std::string>& options : {std::vector<std::string>{"--dry-run"},
                                                  {"--undo-file", File("undo.ldif")},
                                                  {"--report", File("report.jsonl")},
                                                  {"--stop"}}) {
    std::vector<std::string> arguments = {"check"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const ProgramRun run = Ctl(arguments);
    EXPECT_EQ(run.code, 2) << options.front();
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors,
              "peloractl: " + options.front() + ": a check changes nothing without --fix\n");
  }
}

TEST_F(CheckCommand, FixMendsAndThenTellsWhatIsLeft) {
  const ProgramRun run =
      Ctl({"check", "--fix", "--rule", "reference-dangling", "--rule", "feature-conflict"});
  EXPECT_EQ(run.code, 1);
  EXPECT_THAT(run.Lines(), ElementsAre(std::string("changed\t") + kStefan,
                                       std::string("feature-conflict\t") + kSofie +
                                           "\timap is both enabled and disabled"));
  EXPECT_THAT(run.errors, HasSubstr("1 changed, 0 unchanged, 0 refused"));
  EXPECT_THAT(Stored(kStefan, "peloraSendAsPrivilege"), Not(HasSubstr("Uta Alt")));
  EXPECT_THAT(Stored(kStefan, "peloraSendAsPrivilege"), HasSubstr("Vertrieb Info"));
  const ProgramRun again = Ctl({"check", "--fix", "--rule", "reference-dangling"});
  EXPECT_EQ(again.code, 0);
  EXPECT_EQ(again.output, "");
}

TEST_F(CheckCommand, FixChangesNothingElse) {
  const std::string before = Dump();
  EXPECT_EQ(Ctl({"check", "--fix", "--rule", "default-in-others"}).code, 0);
  EXPECT_EQ(Dump(), before);
  Put(kTom, "otherMailbox", {"T.Richter@linden-werke.example", "tom@linden-werke.example"});
  EXPECT_EQ(Ctl({"check", "--fix", "--rule", "default-in-others"}).code, 0);
  EXPECT_EQ(Stored(kTom, "mail"), "t.richter@linden-werke.example");
  EXPECT_EQ(Stored(kTom, "otherMailbox"), "tom@linden-werke.example");
}

TEST_F(CheckCommand, ADryRunPrintsTheLdifAndHasTheCodeOfTheRealOne) {
  const std::string before = Dump();
  const ProgramRun run = Ctl({"check", "--fix", "--dry-run", "--rule", "reference-dangling"});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(Dump(), before);
  EXPECT_THAT(run.output, HasSubstr("delete: peloraSendAsPrivilege"));
  EXPECT_THAT(run.output, Not(HasSubstr("changed\t")));
  EXPECT_THAT(run.errors, HasSubstr(std::string("changed\t") + kStefan));

  const ProgramRun both = Ctl({"check", "--fix", "--dry-run", "--rule", "reference-dangling",
                               "--rule", "feature-conflict"});
  EXPECT_EQ(both.code, 1);
  EXPECT_THAT(both.errors, HasSubstr("feature-conflict\t"));
  EXPECT_THAT(both.errors, EndsWith("\n1 changed, 0 unchanged, 0 refused, 0 failed, 0 unknown, "
                                    "0 skipped\n"));
  EXPECT_THAT(both.output, Not(HasSubstr("feature-conflict")));

  // What was printed does the same with the tool of the file.
  const std::string ldif = Write("mend.ldif", run.output);
  const ProgramRun applied = RunProgram({"/usr/bin/ldbmodify", "-H", File("company.ldb"), ldif},
                                        {{"PATH", "/usr/bin:/bin"}});
  EXPECT_EQ(applied.code, 0) << applied.errors;
  EXPECT_EQ(Ctl({"check", "--rule", "reference-dangling"}).code, 0);
}

TEST_F(CheckCommand, WhatWasMendedCanBeTakenBack) {
  const std::string before = Dump();
  EXPECT_EQ(
      Ctl({"check", "--fix", "--rule", "reference-dangling", "--undo-file", File("undo.ldif")})
          .code,
      0);
  EXPECT_NE(Dump(), before);
  EXPECT_EQ(Ctl({"undo", File("undo.ldif")}).code, 0);
  EXPECT_EQ(Dump(), before);
  EXPECT_EQ(Ctl({"check", "--fix", "--undo-file", File("undo.ldif")}).code, 2);
}

TEST_F(CheckCommand, AListThatSomebodyTouchedSinceItWasMendedIsNotTakenBack) {
  const std::string address = Stored(kTom, "mail");
  Put(kTom, "otherMailbox", {"a@b.example", address});
  ASSERT_EQ(
      Ctl({"check", "--fix", "--rule", "default-in-others", "--undo-file", File("undo")}).code, 0);
  Put(kTom, "otherMailbox", {"a@b.example", "theirs@b.example"});
  const ProgramRun run = Ctl({"undo", File("undo")});
  EXPECT_EQ(run.code, 1);
  EXPECT_THAT(run.output, HasSubstr(std::string("refused\t") + kTom));
  Put(kTom, "otherMailbox", {"a@b.example"});
  EXPECT_EQ(Ctl({"undo", File("undo")}).code, 0);
  EXPECT_THAT(Stored(kTom, "otherMailbox"), HasSubstr(address));
}

TEST_F(CheckCommand, WhatCannotBeTakenOutOnTheTabIsLeft) {
  Put(kUnit, "peloraSystemAdmin", {kNobody});
  Put(kUnit, "peloraViewPrivilege", {kNobody, kGone});
  const ProgramRun run = Ctl({"check", "--fix", "--base", kUnit, "--rule", "reference-dangling",
                              "--report", File("report.jsonl")});
  EXPECT_EQ(run.code, 1);
  EXPECT_THAT(run.Lines(),
              ElementsAre(std::string("changed\t") + kStefan, std::string("changed\t") + kUnit,
                          std::string("reference-dangling\t") + kUnit +
                              "\tpeloraSystemAdmin: " + kNobody + " is not there"));
  EXPECT_EQ(Stored(kUnit, "peloraSystemAdmin"), kNobody);
  EXPECT_EQ(Stored(kUnit, "peloraViewPrivilege"), "");
  EXPECT_THAT(Read(File("report.jsonl")), HasSubstr("\"changed\""));
}

TEST_F(CheckCommand, FixPrintsJsonOfBothKinds) {
  const ProgramRun run = Ctl({"check", "--fix", "--json", "--quiet", "--rule", "reference-dangling",
                              "--rule", "feature-conflict"});
  ASSERT_EQ(run.Lines().size(), 2U);
  EXPECT_EQ(nlohmann::json::parse(run.Lines()[0]).at("result"), "changed");
  EXPECT_EQ(nlohmann::json::parse(run.Lines()[1]).at("rule"), "feature-conflict");
  EXPECT_EQ(run.errors, "");
}

TEST_F(CheckCommand, ValuesDoNotBreakItsLines) {
  Put(kTom, "mail", {"tom\tx\nfeature-conflict\tCN=x"});
  const ProgramRun run = Ctl({"check", "--rule", "address-syntax"});
  ASSERT_EQ(run.Lines().size(), 1U);
  EXPECT_THAT(run.output, HasSubstr("mail: tom x feature-conflict CN=x is no address"));
}

TEST_F(CheckCommand, ToldInItsHelp) {
  const ProgramRun run = Bare({"check", "--help"});
  EXPECT_EQ(run.code, 0);
  for (const char* word :
       {"--rule", "--fix", "--base", "--undo-file", "address-duplicate", "value-range"}) {
    EXPECT_THAT(run.output, HasSubstr(word));
  }
}

}  // namespace
}  // namespace pelora::testing
