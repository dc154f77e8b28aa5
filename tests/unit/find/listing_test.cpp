// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/find/listing.h"

#include <cstdlib>
#include <ctime>
#include <set>
#include <utility>

#include "hosts/session/find/ready_views.h"
#include "tests/unit/find/find_bench.h"

namespace pelora::session {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;
using ::testing::UnorderedElementsAre;

constexpr const char* kCompany = "OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
constexpr const char* kMeyer =
    "CN=Meyer\\, Anna,OU=Geschäftsleitung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";

using Lists = FindBench;

TEST_F(Lists, FindByWordsOfNamesDescriptionsAndAddresses) {
  EXPECT_THAT(Names({.text = "krämer"}), Contains("Birgit Krämer"));
  EXPECT_THAT(Names({.text = "birgit kräm"}), ElementsAre("Birgit Krämer"));
  EXPECT_THAT(Names({.text = "birgit boettger"}), IsEmpty());
  EXPECT_THAT(Names({.text = "f.seid"}), ElementsAre("Frank Seidel"));
  EXPECT_THAT(Names({.text = "norm@linden-werke.example"}), ElementsAre("Frank Seidel"));
  EXPECT_THAT(Names({.text = "slash in its"}), ElementsAre("Labor I/O"));
  EXPECT_THAT(Names({.text = "*"}), IsEmpty());
  EXPECT_EQ(end().end.reason, SearchEnd::Reason::kComplete);
}

TEST_F(Lists, FindAPastedListAndSayWhatIsNotThere) {
  EXPECT_THAT(
      Names({.text = "s.ebert\nnobody@example.org\nAnna Meyer\nJUERGEN@linden-werke.example"}),
      UnorderedElementsAre("Stefan Ebert", "Jürgen Weißflog"));
  EXPECT_THAT(end().not_found, ElementsAre("nobody@example.org", "Anna Meyer"));
  EXPECT_THAT(Names({.text = "Meyer, Anna"}), ElementsAre("Meyer, Anna"));
  EXPECT_THAT(end().not_found, IsEmpty());
  EXPECT_THAT(
      Names({.text = std::string(kMeyer) + "\nr.uhlig\nCN=Nobody,DC=linden-werke,DC=example"}),
      UnorderedElementsAre("Meyer, Anna", "Rolf Uhlig"));
  EXPECT_THAT(end().not_found, ElementsAre("CN=Nobody,DC=linden-werke,DC=example"));
}

TEST_F(Lists, FindALongListAmongAllObjects) {
  std::string list = "s.ebert;a.meyer@linden-werke.example;" + std::string(kMeyer);
  for (int at = 0; at < 200; ++at) list += ";nobody" + std::to_string(at);
  EXPECT_THAT(Names({.text = list}), UnorderedElementsAre("Stefan Ebert", "Meyer, Anna"));
  EXPECT_THAT(end().not_found, SizeIs(200));
}

TEST_F(Lists, LookWhereTheyAreTold) {
  EXPECT_THAT(Names({.base = kCompany, .below = false}), Contains("Vertrieb"));
  EXPECT_THAT(Names({.base = kCompany, .below = false}), Not(Contains("Birgit Krämer")));
  EXPECT_THAT(Names({.base = kCompany}), Contains("Birgit Krämer"));
  EXPECT_THAT(Names({.base = kCompany, .text = "παππά"}), IsEmpty());
  EXPECT_THAT(Names({.text = "παππά"}), SizeIs(1));
  EXPECT_THAT(Names({.base = "OU=Nowhere,DC=linden-werke,DC=example"}), IsEmpty());
  EXPECT_EQ(end().end.reason, SearchEnd::Reason::kFailed);
}

TEST_F(Lists, LeaveOutTheDirectorysOwnMachinery) {
  EXPECT_THAT(Names({.text = "peloraQuotaHard"}), IsEmpty());
  EXPECT_THAT(Names({}), Not(Contains("Configuration")));
}

TEST_F(Lists, SayWhatALimitLeavesOut) {
  EXPECT_THAT(Names({.limit = 3}), SizeIs(3));
  EXPECT_EQ(end().end.reason, SearchEnd::Reason::kOwnLimit);
  StopAfter(2);
  EXPECT_THAT(Names({}), SizeIs(2));
  EXPECT_EQ(end().end.reason, SearchEnd::Reason::kComplete);
}

TEST_F(Lists, SayWhereAFilterIsWrong) {
  EXPECT_THAT(Names({.filter = "(cn=ä)x)"}), IsEmpty());
  EXPECT_EQ(end().end.reason, SearchEnd::Reason::kFailed);
  EXPECT_THAT(end().end.text, HasSubstr("at character 7: nothing may stand behind"));
  EXPECT_THAT(Names({.text = "meyer", .filter = "(objectClass=group)"}), IsEmpty());
  EXPECT_THAT(Names({.text = "meyer", .filter = "(objectClass=user)"}), ElementsAre("Meyer, Anna"));
}

TEST_F(Lists, ShowFieldsAndWhatEveryObjectHas) {
  EXPECT_THAT(
      Rows({.text = "j.weissflog"}, {"name", "TYPE", "folder", "logon", "mail", "peloraQuotaHard",
                                     "accountType", "peloraHidden", "no such column", "name"}),
      ElementsAre("Jürgen Weißflog\tUser\tlinden-werke.example/Linden-Werke "
                  "Chemnitz/Geschäftsleitung\tj.weissflog\tj.weissflog@linden-werke.example"
                  "\t5000\tsystem-administrator\tno"));
  // A group has no quota.
  EXPECT_THAT(Rows({.text = "\"Vertrieb Alle\""}, {"name", "peloraQuotaHard", "type"}),
              ElementsAre("Vertrieb Alle\t\tGroup"));
}

TEST_F(Lists, TellEachColumnFromEveryOther) {
  std::set<std::pair<std::string, std::string>> known;
  for (const ListColumn& column : AllColumns(catalogue())) {
    EXPECT_TRUE(known.emplace(column.title, column.place).second)
        << column.title << " (" << column.place << ")";
  }
  EXPECT_THAT(known, Contains(std::pair("E-mail addresses: others", "Pelora: E-mail addresses")));
  EXPECT_THAT(known, Contains(std::pair("E-mail addresses", "Pelora: E-mail addresses")));
}

TEST_F(Lists, TellWhichTextsDifferAtTheirEnd) {
  std::set<std::string> names;
  for (const ListColumn& column : AllColumns(catalogue())) {
    if (column.tells_at_end) names.insert(column.name);
  }
  EXPECT_THAT(names, IsSupersetOf({"folder", "mail", "otherMailbox", "peloraSendAsPrivilege"}));
  for (const char* name : {"name", "logon", "remark", "created", "peloraQuotaHard"}) {
    EXPECT_THAT(names, Not(Contains(name)));
  }
}

TEST_F(Lists, TellMarksApart) {
  std::map<std::string, ObjectMark> marks;
  const ListingEnd done = ListObjects(store(), {}, ListColumns({}, catalogue()), CheckFields({}),
                                      [&](const ListedObject& listed) {
                                        marks[listed.object.name] = listed.object.mark;
                                        return true;
                                      });
  EXPECT_EQ(done.end.reason, SearchEnd::Reason::kComplete);
  EXPECT_EQ(marks.at("Saal Agricola"), ObjectMark::kRoom);
  EXPECT_EQ(marks.at("Gast"), ObjectMark::kDisabled);
  EXPECT_EQ(marks.at("Rolf Uhlig"), ObjectMark::kNoMailbox);
  EXPECT_EQ(marks.at("Ursula Fischer"), ObjectMark::kNoMailbox);
  EXPECT_EQ(marks.at("Birgit Krämer"), ObjectMark::kNone);
  EXPECT_EQ(marks.at("mail01"), ObjectMark::kServer);
  EXPECT_EQ(marks.at("spare01"), ObjectMark::kNone);
}

TEST_F(Lists, ShowWhatARuleFindsAndInWhichField) {
  const std::vector<std::string> columns = {"name", "field", "problem"};
  EXPECT_THAT(Rows({.rule = "feature-conflict"}, columns),
              ElementsAre(HasSubstr("imap is both enabled and disabled")));
  EXPECT_THAT(Rows({.rule = "reference-dangling"}, columns),
              ElementsAre(StartsWith("Stefan Ebert\tSend as\tpeloraSendAsPrivilege: ")));
  EXPECT_THAT(Rows({.text = "birgit", .rule = "reference-dangling"}, columns), IsEmpty());
  EXPECT_THAT(Rows({.text = "ebert", .rule = "reference-dangling"}, columns), SizeIs(1));
  EXPECT_THAT(Rows({.rule = "no-such-rule"}, columns), IsEmpty());
  EXPECT_EQ(end().end.reason, SearchEnd::Reason::kFailed);
}

TEST_F(Lists, HaveNoFaultWithHostileTexts) {
  for (const std::string& text :
       {std::string(100'000, 'x'), std::string("CN=\\"), std::string("CN=x\nOU=")}) {
    EXPECT_THAT(Names({.text = text}), IsEmpty());
    EXPECT_EQ(end().end.reason, SearchEnd::Reason::kComplete) << end().end.text;
  }
  for (const std::string& text : {std::string("\xFF\xC0"), std::string("a\0b", 3)}) {
    EXPECT_THAT(Names({.text = text}), IsEmpty());
    EXPECT_EQ(end().end.reason, SearchEnd::Reason::kFailed);
  }
}

const ReadyView& Ready(std::string_view name) {
  for (const ReadyView& view : ReadyViews()) {
    if (view.name == name) return view;
  }
  throw std::runtime_error("there is no such view");
}

class ReadyLists : public Lists {
 protected:
  std::vector<std::string> Of(std::string_view name, std::string_view answer = {}) {
    const AnsweredView answered = Answer(Ready(name), answer);
    EXPECT_EQ(answered.error, "");
    std::vector<std::string> names = Names({.filter = answered.view.filter});
    EXPECT_EQ(end().end.reason, SearchEnd::Reason::kComplete) << end().end.text;
    return names;
  }
};

TEST_F(ReadyLists, FindWhatTheySay) {
  EXPECT_THAT(Of("No mailbox"), Contains("Rolf Uhlig"));
  EXPECT_THAT(Of("No mailbox"), Contains("Ursula Fischer"));
  EXPECT_THAT(Of("No mailbox"), Not(Contains("Birgit Krämer")));
  EXPECT_THAT(Of("No mailbox"), Not(Contains("pc-0101")));
  EXPECT_THAT(Of("Own quota above", "1000"),
              UnorderedElementsAre("Jürgen Weißflog", "Klaus Böttger", "Ines Großmann"));
  EXPECT_THAT(Of("Own quota above", "999"), Contains("Frank Seidel"));
  EXPECT_THAT(Of("Feature on", "pop3"), ElementsAre("Helga Önder"));
  EXPECT_THAT(Of("Feature off", "pop3"), UnorderedElementsAre("Tom Richter", "Łukasz Żak"));
  EXPECT_THAT(Of("Feature unset", "pop3"), Contains("Birgit Krämer"));
  EXPECT_THAT(Of("Feature unset", "pop3"), Not(Contains("Tom Richter")));
  EXPECT_THAT(Of("Home server", "MAIL-THESS"), Not(IsEmpty()));
  EXPECT_THAT(Of("Rooms and equipment"), Contains("Saal Agricola"));
  EXPECT_THAT(Of("Administrators"), Contains("Jürgen Weißflog"));
  EXPECT_THAT(Of("Disabled accounts with mailbox"), Not(Contains("Gast")));
  EXPECT_THAT(Of("Changed since", "2026-01-01"), IsEmpty());
  EXPECT_THAT(Of("Hidden"), Contains("Zoë Haupt"));
}

TEST(TimesOfTheDirectory, AreThoseOfTheUser) {
  ASSERT_EQ(setenv("TZ", "EST5", 1), 0);
  tzset();
  EXPECT_EQ(TimeText("20261122004801.0Z"), "2026-11-21 19:48");
  EXPECT_EQ(TimeText("20261122004801Z"), "2026-11-21 19:48");
  for (const char* other : {"", "never", "2026112200480Z", "2026112200480100", "20261122a04801Z"}) {
    EXPECT_EQ(TimeText(other), other);
  }
  ASSERT_EQ(unsetenv("TZ"), 0);
  tzset();
}

}  // namespace
}  // namespace pelora::session
