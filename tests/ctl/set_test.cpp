// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "tests/ctl/peloractl.h"

namespace pelora::testing {
namespace {

using nlohmann::json;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class SetTest : public PeloractlTest {
 protected:
  /// The result of a set of one object: its word, and its message behind a blank.
  [[nodiscard]] std::string Set(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {"set", "--json"});
    const ProgramRun run = Ctl(arguments);
    if (run.Lines().size() != 1) return run.output + run.errors;
    const json result = json::parse(run.output);
    const std::string word = result.at("result");
    EXPECT_EQ(run.code, word == "changed" || word == "unchanged" ? 0 : 1);
    return result.at("message").is_null() ? word
                                          : word + " " + result.at("message").get<std::string>();
  }
};

TEST_F(SetTest, LinesTellResultNameAndMessageAndTheErrorsEndWithTheSums) {
  const ProgramRun run = Ctl({"set", "nobody", "h.oender", "peloraHidden=yes"});
  EXPECT_EQ(run.code, 1);
  EXPECT_THAT(run.Lines(),
              ElementsAre("refused\tnobody\tno such object", std::string("changed\t") + kHelga));
  EXPECT_EQ(run.errors, "1 changed, 0 unchanged, 1 refused, 0 failed, 0 unknown, 0 skipped\n");
  EXPECT_EQ(Stored(kHelga, "peloraHidden"), "1");
  EXPECT_THAT(Ctl({"set", "--quiet", "h.oender", "peloraHidden=yes"}).errors, IsEmpty());
}

TEST_F(SetTest, ResultsAreJsonWhenAskedFor) {
  const ProgramRun run = Ctl({"set", "--json", "h.oender", "nobody", "peloraHidden=on"});
  ASSERT_EQ(run.Lines().size(), 2U);
  EXPECT_EQ(json::parse(run.Lines()[0]),
            (json{{"result", "changed"}, {"dn", kHelga}, {"message", nullptr}, {"code", nullptr}}));
  EXPECT_EQ(json::parse(run.Lines()[1]).at("dn"), "nobody");
}

TEST_F(SetTest, WhatIsAsAskedIsUnchanged) {
  const std::string before = Dump();
  EXPECT_EQ(Set({"h.oender", "peloraHidden=no", "accountType=administrator",
                 "peloraUserServer=MAIL01", "feature.imap=enabled",
                 "peloraQuotaHard=", "otherMailbox=", "mail=h.oender@linden-werke.example"}),
            "unchanged");
  EXPECT_EQ(Dump(), before);
}

TEST_F(SetTest, FlagsTakeAllTheirWords) {
  for (const auto& [on, off] : {std::pair("yes", "no"), std::pair("TRUE", "False"),
                                std::pair("On", "oFF"), std::pair("1", "0")}) {
    EXPECT_EQ(Set({"h.oender", "peloraHidden=" + std::string(on)}), "changed");
    EXPECT_EQ(Stored(kHelga, "peloraHidden"), "1");
    EXPECT_EQ(Set({"h.oender", "peloraHidden=" + std::string(off)}), "changed");
    EXPECT_EQ(Stored(kHelga, "peloraHidden"), "0");
  }
  EXPECT_THAT(Set({"h.oender", "peloraHidden=maybe"}), StartsWith("refused peloraHidden: "));
  EXPECT_THAT(Set({"h.oender", "peloraHidden="}), StartsWith("refused peloraHidden: "));
}

TEST_F(SetTest, ALimitNeedsItsBoxInWhateverOrder) {
  EXPECT_THAT(Set({"h.oender", "peloraQuotaHard=300"}), StartsWith("refused peloraQuotaHard: "));
  EXPECT_EQ(Stored(kHelga, "peloraQuotaHard"), "");
  EXPECT_THAT(Set({"h.oender", "peloraQuotaHard=300"}), EndsWith(" peloraQuotaOverride=yes"));
  EXPECT_THAT(Set({"h.oender", "peloraResourceCapacity=3"}), EndsWith(" accountType=room"));
  EXPECT_EQ(Set({"h.oender", "peloraQuotaHard=300", "peloraQuotaOverride=yes"}), "changed");
  EXPECT_EQ(Stored(kHelga, "peloraQuotaHard"), "300");
  EXPECT_EQ(Stored(kHelga, "peloraQuotaOverride"), "1");
  EXPECT_THAT(Set({"h.oender", "peloraQuotaHard=400", "peloraQuotaOverride=no"}),
              StartsWith("refused peloraQuotaHard: "));
  EXPECT_EQ(Stored(kHelga, "peloraQuotaOverride"), "1");
  // The value that is there is no change, the box going.
  EXPECT_EQ(Set({"h.oender", "peloraQuotaHard=300", "peloraQuotaOverride=no"}), "changed");
  EXPECT_EQ(Set({"h.oender", "peloraQuotaHard=300"}), "unchanged");
}

TEST_F(SetTest, OnlyWhatWasAskedForIsWritten) {
  EXPECT_EQ(Set({"h.oender", "peloraQuotaOverride=yes"}), "changed");
  for (const char* attribute : {"peloraQuotaHard", "peloraQuotaSoft", "peloraQuotaWarn",
                                "peloraHidden", "peloraResourceCapacity", "peloraResourceType"}) {
    EXPECT_EQ(Stored(kHelga, attribute), "") << attribute;
  }
  EXPECT_EQ(Set({"h.oender", "peloraQuotaSoft=0"}), "changed");
  EXPECT_EQ(Stored(kHelga, "peloraQuotaSoft"), "0");
  EXPECT_EQ(Set({"h.oender", "peloraQuotaSoft="}), "changed");
  EXPECT_EQ(Stored(kHelga, "peloraQuotaSoft"), "");
}

TEST_F(SetTest, NumbersAreDigitsUpToTheLargest) {
  EXPECT_EQ(Set({"k.boettger", "peloraQuotaHard=2147483647"}), "changed");
  for (const char* wrong : {"2147483648", "-1", "1.5", "ten", "99999999999999999999"}) {
    EXPECT_THAT(Set({"k.boettger", "peloraQuotaHard=" + std::string(wrong)}),
                StartsWith("refused peloraQuotaHard: "))
        << wrong;
  }
}

TEST_F(SetTest, AccountTypesHaveTheirWords) {
  EXPECT_EQ(Set({"h.oender", "accountType=room", "peloraResourceCapacity=12"}), "changed");
  EXPECT_EQ(Stored(kHelga, "peloraResourceType"), "room");
  EXPECT_EQ(Stored(kHelga, "peloraSharedStoreOnly"), "1");
  EXPECT_EQ(Stored(kHelga, "peloraAdmin"), "0");
  EXPECT_EQ(Stored(kHelga, "peloraResourceCapacity"), "12");
  for (const std::string word : {"shared-store-only", "room", "equipment", "administrator",
                                 "system-administrator", "active-user"}) {
    EXPECT_EQ(Set({"h.oender", "accountType=" + word}), "changed") << word;
    EXPECT_EQ(Fields("h.oender").at("accountType"), word);
    std::string with_blanks = word;
    std::ranges::replace(with_blanks, '-', ' ');
    EXPECT_EQ(Set({"h.oender", "accountType=" + with_blanks}), "unchanged") << word;
  }
  EXPECT_THAT(Set({"h.oender", "peloraResourceCapacity=13"}),
              StartsWith("refused peloraResourceCapacity: "));
  EXPECT_THAT(Set({"h.oender", "accountType=king"}), StartsWith("refused accountType: "));
  EXPECT_THAT(Set({"h.oender", "accountType="}), StartsWith("refused accountType: "));
}

TEST_F(SetTest, FeaturesAreEnabledAndDisabled) {
  EXPECT_EQ(Set({"t.richter", "feature.pop3=enabled", "feature.imap=disabled"}), "changed");
  EXPECT_EQ(Stored(kTom, "peloraEnabledFeatures"), "pop3");
  EXPECT_EQ(Stored(kTom, "peloraDisabledFeatures"), "imap");
  EXPECT_THAT(Set({"t.richter", "feature.pop3=unset"}), StartsWith("refused feature.pop3: "));
  EXPECT_EQ(Set({"j.weissflog", "feature.pop3=unset"}), "unchanged");
  EXPECT_THAT(Set({"t.richter", "feature.pop3="}), StartsWith("refused feature.pop3: "));
  EXPECT_THAT(Set({"t.richter", "feature.pop3=ambiguous"}), StartsWith("refused feature.pop3: "));
}

TEST_F(SetTest, WhatStandsInBothListsIsRefused) {
  const ProgramRun changed =
      RunProgram({"/usr/bin/ldbmodify", "-H", File("company.ldb")}, {{"PATH", "/usr/bin"}},
                 std::string("dn: ") + kTom +
                     "\nchangetype: modify\nadd: peloraDisabledFeatures\n"
                     "peloraDisabledFeatures: imap\n");
  ASSERT_EQ(changed.code, 0) << changed.errors;
  EXPECT_EQ(Fields("t.richter").at("feature.imap"), "ambiguous");
  EXPECT_EQ(Set({"t.richter", "feature.imap=ambiguous"}), "unchanged");
  for (const char* wanted : {"feature.imap=enabled", "feature.imap=disabled"}) {
    EXPECT_THAT(Set({"t.richter", wanted}),
                AllOf(StartsWith("refused feature.imap: "), HasSubstr("both lists")));
  }
}

TEST_F(SetTest, ServersAreComputersThatAreThere) {
  EXPECT_EQ(Set({"h.oender", "peloraUserServer=mail02"}), "changed");
  EXPECT_EQ(Stored(kHelga, "peloraUserServer"), "mail02");
  EXPECT_THAT(Set({"h.oender", "peloraUserServer=mail99"}),
              StartsWith("refused peloraUserServer: mail99: "));
  EXPECT_THAT(Set({"h.oender", "peloraUserServer=*"}), StartsWith("refused peloraUserServer: "));
  EXPECT_THAT(Set({"h.oender", "peloraUserServer="}), StartsWith("refused peloraUserServer: "));
}

TEST_F(SetTest, NamesAreObjects) {
  EXPECT_EQ(Set({kUnit, "peloraSystemAdmin=h.oender"}), "changed");
  EXPECT_EQ(Stored(kUnit, "peloraSystemAdmin"), kHelga);
  EXPECT_EQ(Set({kUnit, "peloraSystemAdmin=" + std::string(kHelga)}), "unchanged");
  EXPECT_THAT(Set({kUnit, "peloraSystemAdmin=mail01"}), StartsWith("refused peloraSystemAdmin: "));
  EXPECT_THAT(Set({kUnit, "peloraSystemAdmin=nobody"}), HasSubstr("no such object"));
  EXPECT_THAT(Set({kUnit, "peloraSystemAdmin="}), StartsWith("refused peloraSystemAdmin: "));
  EXPECT_EQ(Stored(kUnit, "peloraSystemAdmin"), kHelga);
  ASSERT_EQ(Set({sample::kAddressList, "peloraBase=" + std::string(kUnit)}), "changed");
  EXPECT_THAT(Set({sample::kAddressList, "peloraBase="}), StartsWith("refused peloraBase: "));
}

TEST_F(SetTest, ListsOfNamesAreSetAddedToAndRemovedFrom) {
  EXPECT_EQ(Set({"h.oender", "peloraSendAsPrivilege+=t.richter;j.weissflog"}), "changed");
  EXPECT_EQ(Fields("h.oender").at("peloraSendAsPrivilege").size(), 2U);
  EXPECT_EQ(Set({"h.oender", "peloraSendAsPrivilege+=t.richter"}), "unchanged");
  EXPECT_EQ(Set({"h.oender", "peloraSendAsPrivilege=t.richter"}), "changed");
  EXPECT_EQ(Stored(kHelga, "peloraSendAsPrivilege"), kTom);
  EXPECT_EQ(Set({"h.oender", "peloraSendAsPrivilege-=nobody"}), "unchanged");
  EXPECT_THAT(Set({"h.oender", "peloraSendAsPrivilege+=nobody"}),
              StartsWith("refused peloraSendAsPrivilege: nobody: no such object"));
  EXPECT_EQ(Set({"h.oender", "peloraSendAsPrivilege="}), "changed");
  EXPECT_EQ(Stored(kHelga, "peloraSendAsPrivilege"), "");
}

TEST_F(SetTest, WhichOfSeveralIsToGoFromAListIsNotGuessed) {
  const std::string address = "h.oender@linden-werke.example";
  ASSERT_EQ(Set({"t.richter", "otherMailbox+=" + address}), "changed");
  ASSERT_EQ(Set({"k.boettger", "peloraSendAsPrivilege=h.oender"}), "changed");
  EXPECT_THAT(Set({"k.boettger", "peloraSendAsPrivilege-=" + address}),
              AllOf(StartsWith("refused peloraSendAsPrivilege: " + address), HasSubstr(kHelga),
                    HasSubstr(kTom)));
  EXPECT_EQ(Fields("k.boettger").at("peloraSendAsPrivilege").size(), 1U);
}

TEST_F(SetTest, ArchiveServersAreTyped) {
  EXPECT_EQ(Set({"j.weissflog", "peloraUserArchiveServers-=archive01",
                 "peloraUserArchiveServers+=archive03"}),
            "changed");
  EXPECT_EQ(Fields("j.weissflog").at("peloraUserArchiveServers"),
            json::array({"archive02", "archive03"}));
  EXPECT_THAT(Set({"j.weissflog", "peloraUserArchiveServers+=" + std::string(64, 'a')}),
              StartsWith("refused peloraUserArchiveServers: "));
}

TEST_F(SetTest, EachObjectIsWorkedOnByItself) {
  // What one of them refuses is no other's matter, and what one lacks no other's either.
  const ProgramRun run = Ctl({"set", "h.oender", "k.boettger", "peloraQuotaHard=77"});
  EXPECT_THAT(run.Lines(), ElementsAre(StartsWith("refused\t"), StartsWith("changed\t")));
  EXPECT_EQ(Stored(kHelga, "peloraQuotaHard"), "");
  EXPECT_EQ(Fields("k.boettger").at("peloraQuotaHard"), 77);
}

TEST_F(SetTest, NothingOfAnObjectIsWrittenWhenOneFieldIsRefused) {
  const std::string before = Dump();
  EXPECT_THAT(Set({"h.oender", "peloraHidden=yes", "peloraUserServer=mail99"}),
              StartsWith("refused peloraUserServer: "));
  EXPECT_THAT(Set({"h.oender", "peloraHidden=yes", "mail=\xFF"}), StartsWith("refused mail: "));
  EXPECT_EQ(Dump(), before);
}

TEST_F(SetTest, ResultsStandOnOneLine) {
  const ProgramRun run = Ctl({"set", "no\tbody\nat all", "peloraHidden=yes"});
  EXPECT_EQ(run.output, "refused\tno body at all\tno such object\n");
}

TEST_F(SetTest, FieldsOfOtherClassesAreRefused) {
  const ProgramRun run = Ctl({"set", "h.oender", "mail01", "peloraHttpPort=1236"});
  EXPECT_EQ(run.code, 1);
  EXPECT_THAT(run.Lines()[0], HasSubstr("peloraHttpPort"));
  EXPECT_THAT(run.Lines()[1], StartsWith("changed\t"));
}

TEST_F(SetTest, APagesRuleRefusesWithItsCode) {
  const ProgramRun run = Ctl({"set", "--json", "mail01", "peloraFilePath="});
  EXPECT_EQ(run.code, 1);
  const json result = json::parse(run.output);
  EXPECT_EQ(result.at("result"), "refused");
  EXPECT_EQ(result.at("message"),
            "peloraFilePath: Validation of input fields failed: Missing File Path");
  EXPECT_EQ(result.at("code"), "0X80004005");
  // What is wanted of one field may be refused for another: then what was asked for is named.
  EXPECT_EQ(Set({"mail01", "peloraFilePath=", "peloraHttpPort=240"}),
            "refused peloraFilePath: Validation of input fields failed: Missing File Path");
  EXPECT_EQ(Set({"pc-0101", "peloraAccount=yes", "peloraHttpPort=240"}),
            "refused peloraAccount, peloraHttpPort: Validation of input fields failed: Missing "
            "Server Address");
}

TEST_F(SetTest, SeveralObjectsOfANameAreRefusedWithTheirNames) {
  const ProgramRun made = Ctl({"set", "t.richter", "otherMailbox+=h.oender@linden-werke.example"});
  ASSERT_EQ(made.code, 0) << made.output;
  const ProgramRun run = Ctl({"set", "h.oender@linden-werke.example", "peloraHidden=yes"});
  EXPECT_EQ(run.code, 1);
  EXPECT_THAT(run.output, AllOf(StartsWith("refused\t"), HasSubstr(kHelga), HasSubstr(kTom)));
}

TEST_F(SetTest, SelectedObjectsCountInTheOrderOfTheirNames) {
  const std::string base = std::string("OU=IT,") + kUnit;
  const ProgramRun run =
      Ctl({"set", "--base", base, "--class", "user", "j.weissflog", kTom, "peloraHidden=yes"});
  EXPECT_EQ(run.code, 0) << run.output;
  const std::vector<std::string> lines = run.Lines();
  ASSERT_GE(lines.size(), 3U);
  EXPECT_THAT(lines[0], HasSubstr("Weißflog"));
  EXPECT_THAT(lines[1], EndsWith(kTom));
  EXPECT_TRUE(std::is_sorted(lines.begin() + 2, lines.end()));
}

TEST_F(SetTest, StopEndsAtTheFirstThatIsNotDone) {
  const ProgramRun run =
      Ctl({"set", "--stop", "h.oender", "mail01", "t.richter", "peloraHidden=yes"});
  EXPECT_EQ(run.code, 1);
  EXPECT_THAT(run.Lines(), ElementsAre(StartsWith("changed\t"), StartsWith("refused\t"),
                                       StartsWith("skipped\t")));
  EXPECT_EQ(Stored(kTom, "peloraHidden"), "");
}

TEST_F(SetTest, ADryRunPrintsLdifThatHasTheSameEffect) {
  const std::vector<std::string> asked = {"set", "h.oender", "t.richter", "peloraHidden=yes",
                                          "otherMailbox+=helpdesk@linden-werke.example"};
  std::vector<std::string> rehearsed = asked;
  rehearsed.push_back("--dry-run");
  const std::string before = Dump();
  const ProgramRun dry = Ctl(rehearsed);
  EXPECT_EQ(dry.code, 0) << dry.errors;
  EXPECT_EQ(Dump(), before);
  EXPECT_THAT(dry.output, AllOf(HasSubstr("changetype: modify"), Not(HasSubstr("changed"))));
  EXPECT_THAT(dry.errors, AllOf(HasSubstr("changed\t"), HasSubstr("2 changed")));
  const ProgramRun applied = RunProgram({"/usr/bin/ldbmodify", "-H", File("company.ldb")},
                                        {{"PATH", "/usr/bin"}}, dry.output);
  ASSERT_EQ(applied.code, 0) << applied.errors << dry.output;
  const ProgramRun again = Ctl(asked);
  EXPECT_THAT(again.errors, StartsWith("0 changed, 2 unchanged"));
}

TEST_F(SetTest, ADeletedObjectsNameIsTakenOut) {
  const std::string stefan =
      "CN=Stefan Ebert,OU=Vertrieb,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
  const std::string behind = ",CN=Deleted Objects,DC=linden-werke,DC=example";
  const std::string gone = "CN=Uta Alt\\0ADEL:5d0e8c1a-7a54-4c0e-9d7e-3f1f5a2b6c90" + behind;
  const std::string other = "CN=Udo Alt\\0ADEL:5d0e8c1a-7a54-4c0e-9d7e-3f1f5a2b6c91" + behind;
  const std::string field = "peloraSendAsPrivilege";
  const std::string ldif = "dn: " + stefan + "\nchangetype: modify\nadd: " + field + "\n" + field +
                           ": " + other + "\n-\n";
  const ProgramRun put =
      RunProgram({"/usr/bin/ldbmodify", "-H", File("company.ldb")}, {{"PATH", "/usr/bin"}}, ldif);
  ASSERT_EQ(put.code, 0) << put.errors;
  const std::string stored = Stored(stefan, field);
  ASSERT_THAT(stored, AllOf(HasSubstr(gone), HasSubstr(other), HasSubstr("Vertrieb Info")));

  EXPECT_EQ(Set({stefan, field + "-=CN=Ute Alt" + gone.substr(gone.find('\\'))}), "unchanged");
  EXPECT_EQ(Stored(stefan, field), stored);
  // That one alone goes, however its letters are written, and comes back as it was.
  EXPECT_EQ(Set({stefan, field + "-=cn=uta alt" + gone.substr(gone.find('\\')), "--undo-file",
                 File("undo")}),
            "changed");
  EXPECT_THAT(Stored(stefan, field),
              AllOf(Not(HasSubstr(gone)), HasSubstr(other), HasSubstr("Vertrieb Info")));
  EXPECT_EQ(Ctl({"undo", File("undo")}).code, 0);
  EXPECT_EQ(Stored(stefan, field), stored);
  // Beside other edits, of the same list too.
  EXPECT_EQ(Set({stefan, field + "-=" + gone + ";" + other, "peloraHidden=yes"}), "changed");
  EXPECT_EQ(Stored(stefan, "peloraHidden"), "1");
  EXPECT_THAT(Stored(stefan, field), AllOf(Not(HasSubstr("0ADEL")), HasSubstr("Vertrieb Info")));
  ASSERT_EQ(
      RunProgram({"/usr/bin/ldbmodify", "-H", File("company.ldb")}, {{"PATH", "/usr/bin"}}, ldif)
          .code,
      0);
  EXPECT_EQ(Set({stefan, field + "-=" + other, field + "+=t.richter"}), "changed");
  EXPECT_THAT(Stored(stefan, field), AllOf(Not(HasSubstr("0ADEL")), HasSubstr("Vertrieb Info"),
                                           HasSubstr("CN=Tom Richter")));
}

TEST_F(SetTest, ResultsNameAnObjectAsTheDirectoryDoes) {
  const std::string typed =
      "cn=tom richter, ou=it,ou=linden-werke chemnitz,DC=LINDEN-WERKE,dc=example";
  EXPECT_EQ(Ctl({"set", typed, "peloraHidden=yes"}).output, std::string("changed\t") + kTom + "\n");
  EXPECT_EQ(Ctl({"set", typed, "peloraHidden=yes"}).output,
            std::string("unchanged\t") + kTom + "\n");
}

TEST_F(SetTest, AnUndoFileInWhichNothingWasRecordedIsRemoved) {
  const std::string undo = File("undo");
  EXPECT_EQ(Ctl({"set", "--undo-file", undo, "nobody", "peloraHidden=yes"}).code, 1);
  EXPECT_EQ(Ctl({"set", "--undo-file", undo, "h.oender", "peloraHidden=yes"}).code, 0);
  EXPECT_THAT(Read(undo), HasSubstr("# change 0"));
  EXPECT_EQ(Ctl({"set", "--undo-file", undo, "nobody", "peloraHidden=yes"}).code, 2);
  EXPECT_THAT(Read(undo), HasSubstr("# change 0"));
}

TEST_F(SetTest, AReportHasTheResultsAsJsonLines) {
  const ProgramRun run =
      Ctl({"set", "--report", File("report"), "h.oender", "mail01", "peloraHidden=yes"});
  EXPECT_EQ(run.code, 1);
  const std::string report = Read(File("report"));
  EXPECT_EQ(std::count(report.begin(), report.end(), '\n'), 2);
  EXPECT_EQ(json::parse(report.substr(0, report.find('\n'))).at("result"), "changed");
  EXPECT_EQ(Ctl({"set", "--report", "/nowhere/report", "h.oender", "peloraHidden=no"}).code, 2);
  EXPECT_EQ(Stored(kHelga, "peloraHidden"), "1");
}

}  // namespace
}  // namespace pelora::testing
