// SPDX-License-Identifier: Apache-2.0
// Account type, capacity and quota of users in the console, from the click to the directory file.
#include <gmock/gmock.h>

#include "tests/ui/user_tab.h"

namespace pelora::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

enum AccountType : RowIndex {
  kActiveUser,
  kSharedStore,
  kRoom,
  kEquipment,
  kAdministrator,
  kSystemAdministrator
};

class UserTabValues : public UserTab {
 protected:
  void OpenWith(Values values) {
    values.emplace_back("mail", "a@x.test");
    OpenUser(std::move(values));
  }
  void ChooseType(AccountType type) { user().ChooseComboRow(IDC_ACCOUNT_TYPE, type); }
  std::optional<RowIndex> ShownType() { return page().ComboBox(IDC_ACCOUNT_TYPE).Selection(); }
  bool CapacityIsEnabled() {
    EXPECT_EQ(page().IsEnabled(IDC_CAPACITY), page().IsEnabled(IDC_CAPACITY_LABEL));
    return page().IsEnabled(IDC_CAPACITY);
  }
  void Retype(ControlId id, std::string_view text) {
    user().Erase(id);
    user().Type(id, text);
  }
};

TEST_F(UserTabValues, ARoomInCapitalsIsARoomBeforeAnAdministrator) {
  OpenWith({{"peloraResourceType", "ROOM"}, {"peloraAdmin", "1"}});
  EXPECT_EQ(ShownType(), kRoom);
  EXPECT_TRUE(CapacityIsEnabled());
}

TEST_F(UserTabValues, ASharedStoreComesBeforeAnAdministrator) {
  OpenWith({{"peloraSharedStoreOnly", "1"}, {"peloraAdmin", "2"}});
  EXPECT_EQ(ShownType(), kSharedStore);
}

TEST_F(UserTabValues, ALevelBeyondTheListShowsNoTypeAndIsKept) {
  OpenWith({{"peloraAdmin", "3"}});
  EXPECT_EQ(ShownType(), std::nullopt);
  EXPECT_THAT(OkDifference(), IsEmpty());
}

TEST_F(UserTabValues, EachTypeIsWrittenAsWhatItStandsFor) {
  OpenWith({{"peloraAdmin", "0"}, {"peloraSharedStoreOnly", "0"}});
  ChooseType(kSharedStore);
  EXPECT_THAT(Apply(), ElementsAre("- peloraSharedStoreOnly: 0", "+ peloraSharedStoreOnly: 1"));
  ChooseType(kRoom);
  EXPECT_THAT(Apply(), ElementsAre("+ peloraResourceType: room"));
  ChooseType(kEquipment);
  EXPECT_THAT(Apply(),
              ElementsAre("- peloraResourceType: room", "+ peloraResourceType: equipment"));
  ChooseType(kAdministrator);
  EXPECT_THAT(Apply(), ElementsAre("- peloraAdmin: 0", "- peloraResourceType: equipment",
                                   "- peloraSharedStoreOnly: 1", "+ peloraAdmin: 1",
                                   "+ peloraSharedStoreOnly: 0"));
  ChooseType(kSystemAdministrator);
  EXPECT_THAT(Apply(), ElementsAre("- peloraAdmin: 1", "+ peloraAdmin: 2"));
  ChooseType(kActiveUser);
  EXPECT_THAT(Apply(), ElementsAre("- peloraAdmin: 2", "+ peloraAdmin: 0"));
}

TEST_F(UserTabValues, ARoomThatBecomesAnActiveUserKeepsItsCapacity) {
  OpenWith({{"peloraResourceType", "room"}, {"peloraResourceCapacity", "12"}});
  ChooseType(kActiveUser);
  EXPECT_EQ(page().Text(IDC_CAPACITY), "12");
  EXPECT_FALSE(CapacityIsEnabled());
  EXPECT_THAT(Apply(), ElementsAre("- peloraResourceType: room", "+ peloraAdmin: 0",
                                   "+ peloraSharedStoreOnly: 0"));
}

TEST_F(UserTabValues, ACapacityTypedForARoomIsWrittenEvenWhenTheRoomIsGivenUp) {
  OpenWith({});
  ChooseType(kRoom);
  Retype(IDC_CAPACITY, "8a");
  ChooseType(kActiveUser);
  EXPECT_THAT(Apply(), ElementsAre("- peloraResourceCapacity: 0", "+ peloraResourceCapacity: 8"))
      << "the type is as it was";
}

TEST_F(UserTabValues, AnErasedCapacityIsCleared) {
  OpenWith({{"peloraResourceType", "room"}, {"peloraResourceCapacity", "12"}});
  user().Erase(IDC_CAPACITY);
  EXPECT_THAT(Apply(), ElementsAre("- peloraResourceCapacity: 12"));
}

TEST_F(UserTabValues, TheQuotaBoxSwitchesTheLimitsAndIsWrittenAlone) {
  OpenWith({{"peloraQuotaHard", "300"}});
  const auto limits_enabled = [this] {
    return page().IsEnabled(IDC_QUOTA_WARN) && page().IsEnabled(IDC_QUOTA_SOFT) &&
           page().IsEnabled(IDC_QUOTA_HARD);
  };
  EXPECT_FALSE(limits_enabled());
  user().Click(IDC_QUOTA_OVERRIDE);
  EXPECT_TRUE(limits_enabled());
  EXPECT_THAT(Apply(), ElementsAre("+ peloraQuotaOverride: 1"));
  user().Click(IDC_QUOTA_OVERRIDE);
  EXPECT_FALSE(limits_enabled());
  EXPECT_EQ(page().Text(IDC_QUOTA_HARD), "300");
  EXPECT_THAT(Apply(), ElementsAre("- peloraQuotaOverride: 1", "+ peloraQuotaOverride: 0"));
}

TEST_F(UserTabValues, LimitsAreWrittenAsTypedAndClearedWhenErased) {
  OpenWith({{"peloraQuotaOverride", "1"}, {"peloraQuotaHard", "300"}});
  Retype(IDC_QUOTA_WARN, "900");
  Retype(IDC_QUOTA_SOFT, "1200");
  user().Erase(IDC_QUOTA_HARD);
  EXPECT_THAT(Apply(), ElementsAre("- peloraQuotaHard: 300", "+ peloraQuotaSoft: 1200",
                                   "+ peloraQuotaWarn: 900"));
}

TEST_F(UserTabValues, TheLargestLimitIsShownAsItsNumber) {
  OpenWith({{"peloraQuotaOverride", "1"}, {"peloraQuotaHard", "-1"}});
  EXPECT_EQ(page().Text(IDC_QUOTA_HARD), "4294967295");
  EXPECT_THAT(OkDifference(), IsEmpty());
}

TEST_F(UserTabValues, DifferingTypesAndCapacitiesAreShownAsNoneAndStay) {
  Give(kBirgit, {{"peloraResourceType", "room"}, {"peloraResourceCapacity", "4"}});
  Give(kRolf, {{"peloraResourceType", "equipment"}, {"peloraResourceCapacity", "9"}});
  Open({kBirgit, kRolf});
  EXPECT_EQ(ShownType(), std::nullopt);
  EXPECT_EQ(page().Text(IDC_CAPACITY), "");
  EXPECT_FALSE(CapacityIsEnabled());
  EXPECT_FALSE(sheet().IsApplyEnabled());
  EXPECT_THAT(OkDifference(0), IsEmpty());
  EXPECT_THAT(OkDifference(1), IsEmpty());
}

TEST_F(UserTabValues, UsersThatDifferInAnyTypeAttributeShowNoType) {
  const Values differences = {
      {"peloraAdmin", "1"}, {"peloraSharedStoreOnly", "1"}, {"peloraResourceType", "room"}};
  Give(kRolf, {});
  for (const auto& difference : differences) {
    Give(kBirgit, {difference});
    Open({kBirgit, kRolf});
    EXPECT_EQ(ShownType(), std::nullopt) << difference.first;
  }
}

TEST_F(UserTabValues, RoomsOfOneCapacityStayRooms) {
  for (const char* const dn : {kBirgit, kRolf}) {
    Give(dn, {{"peloraResourceType", "room"}, {"peloraResourceCapacity", "4"}});
  }
  Open({kBirgit, kRolf});
  EXPECT_EQ(ShownType(), kRoom);
  EXPECT_TRUE(CapacityIsEnabled());
  Retype(IDC_CAPACITY, "6");
  for (const std::size_t number : {0U, 1U}) {
    EXPECT_THAT(OkDifference(number),
                ElementsAre("- peloraResourceCapacity: 4", "+ peloraResourceCapacity: 6"));
  }
}

TEST_F(UserTabValues, ATypeChosenForSeveralIsWrittenToEachAndNoAddressMissed) {
  Give(kBirgit, {{"peloraAdmin", "2"}});
  Give(kRolf, {});
  Open({kBirgit, kRolf});
  ChooseType(kActiveUser);
  EXPECT_THAT(OkDifference(0),
              ElementsAre("- peloraAdmin: 2", "+ peloraAdmin: 0", "+ peloraSharedStoreOnly: 0"));
  EXPECT_THAT(OkDifference(1), ElementsAre("+ peloraAdmin: 0", "+ peloraSharedStoreOnly: 0"));
}

TEST_F(UserTabValues, DifferingQuotasAreLeftToEachUser) {
  Give(kBirgit, {{"peloraQuotaOverride", "1"}, {"peloraQuotaHard", "300"}});
  Give(kRolf, {{"peloraQuotaHard", "400"}});
  Open({kBirgit, kRolf});
  EXPECT_EQ(page().Check(IDC_QUOTA_OVERRIDE), CheckState::kIndeterminate);
  EXPECT_EQ(page().Text(IDC_QUOTA_WARN), "0");
  EXPECT_EQ(page().Text(IDC_QUOTA_HARD), "");
  EXPECT_FALSE(page().IsEnabled(IDC_QUOTA_HARD));
  EXPECT_THAT(OkDifference(0), IsEmpty());
  EXPECT_THAT(OkDifference(1), IsEmpty());
}

}  // namespace
}  // namespace pelora::test
