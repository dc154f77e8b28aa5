// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "tests/unit/check/check_bench.h"

namespace pelora::session {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

class ReferenceRules : public CheckBench {};

std::string Upper(std::string text) {
  for (char& letter : text)
    letter = static_cast<char>(letter >= 'a' && letter <= 'z' ? letter - 32 : letter);
  return text;
}

TEST_F(ReferenceRules, AHomeServerThatIsNoServerIsFound) {
  Put(kUser, "peloraUserServer", {"mail99"});
  Put(kCompany, "peloraCompanyServer", {"pc-0101"});
  EXPECT_THAT(
      Lines("server-unknown"),
      ElementsAre(
          "Heike Naumann\tpeloraUserServer: mail99 is no computer with a Pelora server",
          "Linden-Werke Chemnitz\tpeloraCompanyServer: pc-0101 is no computer with a Pelora "
          "server"));
}

TEST_F(ReferenceRules, AServerIsItsCommonNameWithoutCase) {
  Put(kUser, "peloraUserServer", {"MAIL01"});
  EXPECT_THAT(Lines("server-unknown"), IsEmpty());
  Put(kUser, "peloraUserServer", {"mail01.linden-werke.example"});
  EXPECT_EQ(Lines("server-unknown").size(), 1U);
}

TEST_F(ReferenceRules, AServerThatIsSwitchedOffIsNone) {
  Put("CN=mail02,OU=Groupware Servers,DC=linden-werke,DC=example", "peloraAccount", {"0"});
  EXPECT_GT(Lines("server-unknown").size(), 5U);
}

TEST_F(ReferenceRules, EachArchiveServerHasToBeOne) {
  Put(kUser, "peloraUserArchiveServers", {"archive01", "archive03", "spare01"});
  EXPECT_THAT(
      Lines("server-unknown"),
      ElementsAre("Heike Naumann\tpeloraUserArchiveServers: archive03 is no computer with a "
                  "Pelora server",
                  "Heike Naumann\tpeloraUserArchiveServers: spare01 is no computer with a "
                  "Pelora server"));
}

TEST_F(ReferenceRules, ServersOutsideOfTheBaseCount) {
  EXPECT_THAT(Lines("server-unknown", kCompany), IsEmpty());
}

TEST_F(ReferenceRules, ANameOfNobodyIsFoundInEveryListAndTakenOut) {
  struct Place {
    const char* dn;
    const char* attribute;
  };
  for (const Place& place :
       {Place{kUser, "peloraSendAsPrivilege"}, Place{kContact, "peloraSendAsPrivilege"},
        Place{kGroup, "peloraSendAsPrivilege"}, Place{kCompany, "peloraViewPrivilege"},
        Place{kCompany, "peloraAdminPrivilege"},
        Place{kCompany, "peloraQuotaUserWarningRecipients"},
        Place{kCompany, "peloraQuotaCompanyWarningRecipients"}}) {
    const ldap::AttributeValues before = Get(place.dn, place.attribute);
    ldap::AttributeValues values = before;
    values.emplace_back(kNobody);
    values.emplace_back(kDeleted);
    Put(place.dn, place.attribute, values);
    EXPECT_THAT(
        Lines("reference-dangling"),
        ElementsAre(
            CommonName(place.dn) + "\t" + place.attribute + ": " + kDeleted + " was deleted",
            CommonName(place.dn) + "\t" + place.attribute + ": " + kNobody + " is not there"));
    Mend("reference-dangling");
    EXPECT_EQ(Get(place.dn, place.attribute), before) << place.attribute;
    EXPECT_THAT(Lines("reference-dangling"), IsEmpty());
  }
}

TEST_F(ReferenceRules, ANameIsComparedAsTheDirectoryDoes) {
  Put(kUser, "peloraSendAsPrivilege",
      {Upper(kContact),
       "cn=O'Neill\\2C Patrick, ou=Kontakte,OU=Linden-Werke "
       "Chemnitz,DC=linden-werke,DC=example"});
  EXPECT_THAT(Lines("reference-dangling"), IsEmpty());
}

TEST_F(ReferenceRules, ObjectsWithoutTabsAndOutsideOfTheBaseAreThere) {
  Put(kUser, "peloraSendAsPrivilege",
      {"CN=Users,DC=linden-werke,DC=example",
       "CN=Administrator,CN=Users,DC=linden-werke,DC=example"});
  EXPECT_THAT(Lines("reference-dangling"), IsEmpty());
  EXPECT_THAT(Lines("reference-dangling", kUser), IsEmpty());
}

TEST_F(ReferenceRules, ANameThatCannotBeTakenOutOnTheTabIsFoundAndNotMended) {
  Put(kCompany, "peloraSystemAdmin", {kNobody});
  Put(kAddressList, "peloraBase", {kNobody});
  Put(kDynamicList, "peloraSendAsPrivilege", {kNobody});
  const std::vector<Finding> findings = Findings("reference-dangling");
  ASSERT_EQ(findings.size(), 3U);
  for (const Finding& finding : findings) EXPECT_FALSE(finding.mend) << finding.message;
  EXPECT_THAT(MendsOf(findings), IsEmpty());
}

TEST_F(ReferenceRules, SeveralNamesOfAnObjectGoWithOneChange) {
  Put(kUser, "peloraSendAsPrivilege", {kNobody, kDeleted, kContact});
  Put(kCompany, "peloraViewPrivilege", {kNobody});
  Put(kCompany, "peloraAdminPrivilege", {kNobody});
  const std::vector<changes::Change> mends = MendsOf(Findings("reference-dangling"));
  ASSERT_EQ(mends.size(), 2U);
  for (const changes::Change& mend : mends) {
    if (mend.dn == kUser) {
      ASSERT_EQ(mend.attributes.size(), 1U);
      EXPECT_THAT(mend.attributes[0].seen, UnorderedElementsAre(kNobody, kDeleted));
      EXPECT_THAT(mend.attributes[0].wanted, IsEmpty());
    } else {
      EXPECT_EQ(mend.dn, kCompany);
      EXPECT_EQ(mend.attributes.size(), 2U);
    }
  }
  Mend("reference-dangling");
  EXPECT_THAT(Get(kUser, "peloraSendAsPrivilege"), ElementsAre(kContact));
}

TEST_F(ReferenceRules, MoreNamesThanAreLookedUpAtOnceAreAllLookedUp) {
  ldap::AttributeValues names;
  for (int at = 0; at < 1200; ++at) {
    names.push_back("CN=Nobody " + std::to_string(at) + ",DC=linden-werke,DC=example");
  }
  Put(kUser, "peloraSendAsPrivilege", names);
  EXPECT_EQ(Lines("reference-dangling").size(), 1200U);
}

TEST_F(ReferenceRules, ASearchBaseThatIsNotThereIsFound) {
  Put(kAddressList, "peloraBase", {"OU=Gone,DC=linden-werke,DC=example"});
  Put(kDynamicList, "peloraBase", {"no name at all"});
  EXPECT_THAT(Lines("base-unknown"),
              ElementsAre("Alle in Chemnitz\tpeloraBase: no name at all is not there",
                          "Räume\tpeloraBase: OU=Gone,DC=linden-werke,DC=example is not there"));
}

TEST_F(ReferenceRules, NoSearchBaseIsNoFault) {
  Put(kAddressList, "peloraBase", {});
  EXPECT_THAT(Lines("base-unknown"), IsEmpty());
}

TEST_F(ReferenceRules, ASystemAdministratorHasToBeAUserWhoIsThere) {
  for (const auto& [name, what] : std::vector<std::pair<std::string, std::string>>{
           {kNobody, "is not there"},
           {kDeleted, "was deleted"},
           {kGroup, "is no user"},
           {kContact, "is no user"},
           {kServer, "is no user"},
           {"CN=Users,DC=linden-werke,DC=example", "is no user"}}) {
    Put(kCompany, "peloraSystemAdmin", {name});
    std::string line = "Linden-Werke Chemnitz\tpeloraSystemAdmin: ";
    line += name + " " + what;
    EXPECT_THAT(Lines("company-admin"), ElementsAre(line));
    EXPECT_THAT(Lines("company-admin", kCompany), ElementsAre(line));
  }
  Put(kCompany, "peloraSystemAdmin", {kOtherUser});
  EXPECT_THAT(Lines("company-admin"), IsEmpty());
}

TEST_F(ReferenceRules, OnlyACompanyWithAnAccountNeedsItsAdministrator) {
  Put(kCompany, "peloraSystemAdmin", {kNobody});
  Put(kCompany, "peloraAccount", {"0"});
  EXPECT_THAT(Lines("company-admin"), IsEmpty());
}

}  // namespace
}  // namespace pelora::session
