// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "tests/unit/check/check_bench.h"

namespace pelora::session {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ValueRules : public CheckBench {
 protected:
  void PutQuota(const ldap::AttributeValues& box, const ldap::AttributeValues& warning,
                const ldap::AttributeValues& soft, const ldap::AttributeValues& hard) {
    Put(kUser, "peloraQuotaOverride", box);
    Put(kUser, "peloraQuotaWarn", warning);
    Put(kUser, "peloraQuotaSoft", soft);
    Put(kUser, "peloraQuotaHard", hard);
  }
};

TEST_F(ValueRules, LimitsThatAreUsedHaveToRise) {
  PutQuota({"1"}, {"300"}, {"200"}, {"100"});
  EXPECT_THAT(
      Lines("quota-order"),
      ElementsAre("Heike Naumann\tlimits that are not in order: warning 300, soft 200, hard 100"));
  PutQuota({"1"}, {"100"}, {"300"}, {"200"});
  EXPECT_EQ(Lines("quota-order").size(), 1U);
  PutQuota({"1"}, {"200"}, {"100"}, {"300"});
  EXPECT_EQ(Lines("quota-order").size(), 1U);
  PutQuota({"1"}, {"100"}, {"100"}, {"100"});
  EXPECT_THAT(Lines("quota-order"), IsEmpty());
}

TEST_F(ValueRules, LimitsThatAreNotUsedMayBeAnything) {
  for (const ldap::AttributeValues& box : {ldap::AttributeValues{}, ldap::AttributeValues{"0"}}) {
    PutQuota(box, {"300"}, {"200"}, {"100"});
    EXPECT_THAT(Lines("quota-order"), IsEmpty());
  }
}

TEST_F(ValueRules, UnsetAndZeroAreNoLimits) {
  PutQuota({"1"}, {"100"}, {}, {"0"});
  EXPECT_THAT(Lines("quota-order"), IsEmpty());
  PutQuota({"1"}, {"0"}, {"0"}, {"0"});
  EXPECT_THAT(Lines("quota-order"), IsEmpty());
  PutQuota({"1"}, {"300"}, {}, {"200"});
  EXPECT_THAT(Lines("quota-order"),
              ElementsAre("Heike Naumann\tlimits that are not in order: warning 300, hard 200"));
  PutQuota({"1"}, {"300"}, {"0"}, {"200"});
  EXPECT_EQ(Lines("quota-order").size(), 1U);
}

TEST_F(ValueRules, TheDefaultForACompanysUsersHasABoxOfItsOwn) {
  Put(kCompany, "peloraUserDefaultQuotaHard", {"850"});
  EXPECT_THAT(
      Lines("quota-order"),
      ElementsAre("Linden-Werke Chemnitz\tlimits that are not in order: user default warning "
                  "800, user default soft 900, user default hard 850"));
  Put(kCompany, "peloraUserDefaultQuotaOverride", {"0"});
  EXPECT_THAT(Lines("quota-order"), IsEmpty());
}

TEST_F(ValueRules, AQueryHasToBeAFilter) {
  Put(kAddressList, "peloraFilter", {"(objectClass=user"});
  Put(kDynamicList, "peloraFilter", {"mail=*"});
  EXPECT_THAT(Lines("filter-syntax"),
              ElementsAre("Alle in Chemnitz\tpeloraFilter: mail=* is no LDAP filter",
                          "Räume\tpeloraFilter: (objectClass=user is no LDAP filter"));
  Put(kAddressList, "peloraAccount", {"0"});
  EXPECT_EQ(Lines("filter-syntax").size(), 2U);
}

TEST_F(ValueRules, AListWithAnAccountNeedsAQuery) {
  Put(kAddressList, "peloraFilter", {});
  Put(kDynamicList, "peloraFilter", {});
  Put(kDynamicList, "peloraAccount", {"0"});
  EXPECT_THAT(Lines("filter-syntax"), ElementsAre("Räume\ta list without a search query"));
}

TEST_F(ValueRules, AFeatureIsNotBothEnabledAndDisabled) {
  Put(kUser, "peloraEnabledFeatures", {"pop3", "imap", "other"});
  Put(kUser, "peloraDisabledFeatures", {"imap", "other"});
  EXPECT_THAT(Lines("feature-conflict"),
              ElementsAre("Heike Naumann\timap is both enabled and disabled",
                          "Heike Naumann\tother is both enabled and disabled"));
}

TEST_F(ValueRules, NamesOfFeaturesAreComparedWithCase) {
  Put(kUser, "peloraEnabledFeatures", {"imap"});
  Put(kUser, "peloraDisabledFeatures", {"IMAP"});
  EXPECT_THAT(Lines("feature-conflict"), IsEmpty());
}

TEST_F(ValueRules, AResourceTypeIsOneThatTheTabKnows) {
  Put(kUser, "peloraResourceType", {"car"});
  Put(kUser, "peloraSharedStoreOnly", {"1"});
  EXPECT_THAT(Lines("resource-type"),
              ElementsAre("Heike Naumann\tpeloraResourceType: car is no resource type"));
  for (const char* type : {"room", "ROOM", "equipment", "Equipment"}) {
    Put(kUser, "peloraResourceType", {type});
    EXPECT_THAT(Lines("resource-type"), IsEmpty()) << type;
  }
}

TEST_F(ValueRules, ARoomIsASharedStore) {
  Put(kRoom, "peloraSharedStoreOnly", {});
  EXPECT_THAT(Lines("resource-type"), ElementsAre("Saal Agricola\troom that is no shared store"));
  Put(kRoom, "peloraSharedStoreOnly", {"0"});
  EXPECT_EQ(Lines("resource-type").size(), 1U);
}

TEST_F(ValueRules, AServerNeedsAnAddressAPathAndAPort) {
  Put(kServer, "peloraHttpPort", {});
  EXPECT_THAT(Lines("server-incomplete"), IsEmpty());
  Put(kServer, "peloraSslPort", {"0"});
  EXPECT_THAT(Lines("server-incomplete"), ElementsAre("mail01\ta Pelora server without port"));
  Put(kServer, "peloraHostAddress", {});
  Put(kServer, "peloraFilePath", {});
  EXPECT_THAT(Lines("server-incomplete"),
              ElementsAre("mail01\ta Pelora server without address, port, file path"));
  Put(kServer, "peloraAccount", {"0"});
  EXPECT_THAT(Lines("server-incomplete"), IsEmpty());
}

TEST_F(ValueRules, FlagsAreZeroOrOneAndNumbersNotNegative) {
  Put(kUser, "peloraHidden", {"2"});
  Put(kUser, "peloraAccount", {"-1"});
  Put(kUser, "peloraQuotaHard", {"-5"});
  Put(kUser, "peloraAdmin", {"-1"});
  EXPECT_THAT(Lines("value-range"),
              ElementsAre("Heike Naumann\tpeloraAccount: -1 is no flag: 0 or 1",
                          "Heike Naumann\tpeloraAdmin: -1 is negative",
                          "Heike Naumann\tpeloraHidden: 2 is no flag: 0 or 1",
                          "Heike Naumann\tpeloraQuotaHard: -5 is negative"));
}

TEST_F(ValueRules, EveryOtherNumberIsInRange) {
  Put(kUser, "peloraHidden", {"1"});
  Put(kUser, "peloraQuotaHard", {"2147483647"});
  Put(kUser, "peloraQuotaWarn", {"0"});
  EXPECT_THAT(Lines("value-range"), IsEmpty());
}

}  // namespace
}  // namespace pelora::session
