// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "tests/unit/check/check_bench.h"

namespace pelora::session {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class AddressRules : public CheckBench {};

TEST_F(AddressRules, AnAddressOfTwoObjectsIsFoundOnBoth) {
  Put(kUser, "otherMailbox", {"Shared@linden-werke.example"});
  Put(kContact, "mail", {"shared@Linden-Werke.example"});
  const std::vector<Finding> findings = Findings("address-duplicate");
  ASSERT_EQ(findings.size(), 2U);
  EXPECT_EQ(findings[0].dn, kContact);
  EXPECT_THAT(findings[0].others, ElementsAre(kUser));
  EXPECT_EQ(findings[0].message,
            std::string("shared@linden-werke.example also belongs to ") + kUser);
  EXPECT_EQ(findings[1].dn, kUser);
  EXPECT_THAT(findings[1].others, ElementsAre(kContact));
  EXPECT_FALSE(findings[0].mend);
}

TEST_F(AddressRules, AnObjectHasOneFindingForAllItsSharedAddresses) {
  Put(kUser, "otherMailbox", {"one@example.org", "two@example.org", "three@example.org"});
  Put(kContact, "otherMailbox", {"one@example.org", "two@example.org"});
  Put(kGroup, "otherMailbox", {"TWO@example.org"});
  const std::vector<Finding> findings = Findings("address-duplicate");
  ASSERT_EQ(findings.size(), 3U);
  EXPECT_THAT(findings[0].others, ElementsAre(kUser, kGroup));
  EXPECT_EQ(findings[0].message, std::string("one@example.org, two@example.org also belongs to ") +
                                     kUser + "; " + kGroup);
  EXPECT_THAT(findings[1].others, ElementsAre(kContact, kGroup));
  EXPECT_THAT(findings[2].others, ElementsAre(kContact, kUser));
}

TEST_F(AddressRules, AMessageNamesThreeOthersAndCountsTheRest) {
  for (const char* dn : {kUser, kOtherUser, kContact, kGroup, kDynamicList}) {
    Put(dn, "otherMailbox", {"all@example.org"});
  }
  const std::vector<Finding> findings = Findings("address-duplicate");
  ASSERT_EQ(findings.size(), 5U);
  EXPECT_EQ(findings.front().others.size(), 4U);
  EXPECT_TRUE(findings.front().message.ends_with(" and 1 more")) << findings.front().message;
}

TEST_F(AddressRules, AnAddressThatOneObjectHasTwiceIsNoDuplicate) {
  Put(kUser, "mail", {"heike@example.org"});
  Put(kUser, "otherMailbox", {"HEIKE@example.org"});
  EXPECT_THAT(Lines("address-duplicate"), IsEmpty());
}

TEST_F(AddressRules, ObjectsOutsideOfTheBaseAreNotLookedAt) {
  Put(kUser, "otherMailbox", {"shared@example.org"});
  Put(kContact, "mail", {"shared@example.org"});
  EXPECT_THAT(Lines("address-duplicate", "OU=Fertigung," + std::string(kCompany)), IsEmpty());
}

TEST_F(AddressRules, AnActiveUserWithoutAnAddressIsFound) {
  Put(kUser, "mail", {});
  EXPECT_THAT(Lines("address-missing"),
              ElementsAre("Heike Naumann\tan active user without an address"));
  // The base counts itself.
  EXPECT_EQ(Lines("address-missing", kUser).size(), 1U);
}

TEST_F(AddressRules, AnotherAddressIsAnAddress) {
  Put(kUser, "mail", {});
  Put(kUser, "otherMailbox", {"heike@example.org"});
  EXPECT_THAT(Lines("address-missing"), IsEmpty());
}

TEST_F(AddressRules, OnlyActiveUsersWithAnAccountNeedAnAddress) {
  Put(kUser, "mail", {});
  for (const auto& [attribute, value] :
       std::vector<std::pair<std::string, std::string>>{{"peloraAccount", "0"},
                                                        {"peloraSharedStoreOnly", "1"},
                                                        {"peloraAdmin", "1"},
                                                        {"peloraAdmin", "2"},
                                                        {"peloraAdmin", "3"},
                                                        {"peloraResourceType", "Room"}}) {
    const ldap::AttributeValues before = Get(kUser, attribute);
    Put(kUser, attribute, {value});
    EXPECT_THAT(Lines("address-missing"), IsEmpty()) << attribute << " " << value;
    Put(kUser, attribute, before);
  }
  Put(kUser, "peloraAccount", {});
  EXPECT_THAT(Lines("address-missing"), IsEmpty());
  Put(kContact, "mail", {});
  EXPECT_THAT(Lines("address-missing"), IsEmpty());
}

TEST_F(AddressRules, AnAddressThatIsNoneIsFoundWhereverItStands) {
  Put(kUser, "mail", {"heike"});
  Put(kContact, "otherMailbox",
      {"r.thiel@example.org", "r thiel@example.org", "jürgen@example.org"});
  EXPECT_THAT(Lines("address-syntax"),
              ElementsAre("Dr. Renate Thiel\totherMailbox: jürgen@example.org is no address",
                          "Dr. Renate Thiel\totherMailbox: r thiel@example.org is no address",
                          "Heike Naumann\tmail: heike is no address"));
}

TEST_F(AddressRules, ADefaultAddressAmongTheOthersGoesFromThem) {
  Put(kUser, "mail", {"heike@example.org"});
  Put(kUser, "otherMailbox", {"h@example.org", "Heike@Example.org"});
  EXPECT_THAT(Lines("default-in-others"),
              ElementsAre("Heike Naumann\tHeike@Example.org is the default address and stands in "
                          "otherMailbox too"));
  Mend("default-in-others");
  EXPECT_THAT(Get(kUser, "mail"), ElementsAre("heike@example.org"));
  EXPECT_THAT(Get(kUser, "otherMailbox"), ElementsAre("h@example.org"));
  EXPECT_THAT(Lines("default-in-others"), IsEmpty());
}

TEST_F(AddressRules, TheOnlyOtherAddressMayBeTheOneThatGoes) {
  Put(kGroup, "otherMailbox", Get(kGroup, "mail"));
  EXPECT_EQ(Lines("default-in-others").size(), 1U);
  Mend("default-in-others");
  EXPECT_THAT(Get(kGroup, "otherMailbox"), IsEmpty());
}

TEST_F(AddressRules, WhereTheTabHasNoAddressesNothingIsMended) {
  Put(kCompany, "mail", {"company@example.org"});
  Put(kCompany, "otherMailbox", {"company@example.org"});
  const std::vector<Finding> findings = Findings("default-in-others");
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_FALSE(findings.front().mend);
}

TEST_F(AddressRules, NoDefaultAddressIsAmongNoOthers) {
  Put(kUser, "mail", {});
  Put(kUser, "otherMailbox", {"heike@example.org"});
  EXPECT_THAT(Lines("default-in-others"), IsEmpty());
}

}  // namespace
}  // namespace pelora::session
