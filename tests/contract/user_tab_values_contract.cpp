// SPDX-License-Identifier: Apache-2.0
// Account type, capacity and quota of users: what the tab shows, and what is in the directory
// afterwards.
#include "tests/contract/user_tab_contract.h"

namespace pelora::contract {

bool UserTabContract::CapacityIsEnabled() {
  EXPECT_EQ(Page().IsEnabled(IDC_CAPACITY), Page().IsEnabled(IDC_CAPACITY_LABEL));
  return Page().IsEnabled(IDC_CAPACITY);
}

bool UserTabContract::LimitsAreEnabled() {
  EXPECT_EQ(Page().IsEnabled(IDC_QUOTA_WARN), Page().IsEnabled(IDC_QUOTA_SOFT));
  EXPECT_EQ(Page().IsEnabled(IDC_QUOTA_WARN), Page().IsEnabled(IDC_QUOTA_HARD));
  return Page().IsEnabled(IDC_QUOTA_WARN);
}

// Untouched.

TEST_P(UserTabContract, AnUntouchedUserHasItsCapacityWrittenAndNothingElse) {
  OpenUser({{"mail", {"a@x.test"}},
            {"otherMailbox", {"b@x.test", "c@x.test"}},
            {"peloraSendAsPrivilege", AllHere({sample::kAnna, sample::kTom})},
            {"peloraHidden", {"1"}},
            {"peloraQuotaOverride", {"1"}},
            {"peloraQuotaWarn", {"100"}},
            {"peloraQuotaSoft", {"200"}},
            {"peloraQuotaHard", {"300"}},
            {"peloraAdmin", {"2"}},
            {"peloraUserServer", {"node-1"}},
            {"peloraResourceCapacity", {}}});
  EXPECT_EQ(Ok(), Console().WritesUntouched() ? Lines{"peloraResourceCapacity: 0"} : Lines{});
}

TEST_P(UserTabContract, AnUntouchedRoomStaysAsItIs) {
  OpenUser({{"peloraResourceType", {"room"}},
            {"peloraSharedStoreOnly", {"1"}},
            {"peloraResourceCapacity", {"12"}}});
  EXPECT_EQ(Ok(), Lines{});
}

TEST_P(UserTabContract, AnUntouchedMixedSelectionLosesTypesAndCapacitiesWhereThatIsWritten) {
  OpenUsers({{{"peloraResourceType", {"room"}}, {"peloraResourceCapacity", {"4"}}},
             {{"peloraResourceType", {"equipment"}}, {"peloraResourceCapacity", {"9"}}}});
  EXPECT_EQ(ShownType(), std::nullopt);
  EXPECT_EQ(Page().Text(IDC_CAPACITY), "");
  EXPECT_FALSE(CapacityIsEnabled());
  const Lines lost = {"peloraResourceCapacity: none", "peloraResourceType: none"};
  const Lines expected = Console().WritesUntouched() ? lost : Lines{};
  EXPECT_EQ(Ok(), expected);
  EXPECT_EQ(Changes(1), expected);
}

// The account's type.

TEST_P(UserTabContract, ARoomInCapitalsIsARoomBeforeAnAdministrator) {
  OpenUser({{"peloraResourceType", {"ROOM"}}, {"peloraAdmin", {"1"}}});
  EXPECT_EQ(ShownType(), kRoom);
  EXPECT_TRUE(CapacityIsEnabled());
}

TEST_P(UserTabContract, ASharedStoreComesBeforeAnAdministrator) {
  OpenUser({{"peloraSharedStoreOnly", {"1"}}, {"peloraAdmin", {"2"}}});
  EXPECT_EQ(ShownType(), kSharedStore);
}

TEST_P(UserTabContract, ALevelBeyondTheListShowsNoTypeAndIsKept) {
  OpenUser({{"mail", {"a@x.test"}}, {"peloraAdmin", {"3"}}});
  EXPECT_EQ(ShownType(), std::nullopt);
  EXPECT_EQ(Ok(), Lines{});
}

TEST_P(UserTabContract, EachTypeIsWrittenAsWhatItStandsFor) {
  OpenUser({{"mail", {"a@x.test"}}, {"peloraAdmin", {"3"}}});
  struct Written {
    AccountType type;
    Lines changes;
  };
  const std::vector<Written> rows = {
      {kActiveUser, {"peloraAdmin: 0", "peloraSharedStoreOnly: 0"}},
      {kSharedStore, {"peloraSharedStoreOnly: 1"}},
      {kRoom, {"peloraResourceType: room"}},
      {kEquipment, {"peloraResourceType: equipment"}},
      {kAdministrator, {"peloraAdmin: 1", "peloraResourceType: none", "peloraSharedStoreOnly: 0"}},
      {kSystemAdministrator, {"peloraAdmin: 2"}},
      {kActiveUser, {"peloraAdmin: 0"}}};
  for (const Written& row : rows) {
    ChooseType(row.type);
    EXPECT_TRUE(Console().IsApplyEnabled());
    EXPECT_EQ(CapacityIsEnabled(), row.type == kRoom || row.type == kEquipment);
    EXPECT_EQ(Apply(), row.changes) << row.type;
  }
}

TEST_P(UserTabContract, ARoomThatBecomesAnActiveUserKeepsItsCapacity) {
  OpenUser({{"mail", {"a@x.test"}},
            {"peloraResourceType", {"room"}},
            {"peloraSharedStoreOnly", {"1"}},
            {"peloraResourceCapacity", {"12"}}});
  ChooseType(kActiveUser);
  EXPECT_EQ(Page().Text(IDC_CAPACITY), "12");
  EXPECT_FALSE(CapacityIsEnabled());
  EXPECT_EQ(Apply(),
            (Lines{"peloraAdmin: 0", "peloraResourceType: none", "peloraSharedStoreOnly: 0"}));
}

TEST_P(UserTabContract, ACapacityTypedForARoomIsWrittenEvenWhenTheRoomIsGivenUp) {
  OpenUser({{"mail", {"a@x.test"}}});
  ChooseType(kRoom);
  Retype(IDC_CAPACITY, "8");
  ChooseType(kActiveUser);
  const Lines all = {"peloraAdmin: 0", "peloraResourceCapacity: 8", "peloraSharedStoreOnly: 0"};
  EXPECT_EQ(Apply(), Console().LooksAfterFields() ? Lines{all[1]} : all) << "the type was set back";
}

TEST_P(UserTabContract, TheCapacityTakesDigitsOnlyAndCanBeErased) {
  OpenUser({{"peloraResourceType", {"equipment"}}, {"peloraResourceCapacity", {"7"}}});
  Retype(IDC_CAPACITY, "1a2-");
  EXPECT_EQ(Page().Text(IDC_CAPACITY), "12");
  EXPECT_EQ(Apply(), Lines{"peloraResourceCapacity: 12"});
  User().Erase(IDC_CAPACITY);
  EXPECT_EQ(Apply(), Lines{"peloraResourceCapacity: none"});
}

TEST_P(UserTabContract, UsersThatDifferInAnyTypeAttributeShowNoType) {
  for (const auto& [attribute, value] : {std::pair{"peloraAdmin", "1"},
                                         {"peloraSharedStoreOnly", "1"},
                                         {"peloraResourceType", "room"}}) {
    OpenUsers({{}, {{attribute, {value}}}});
    EXPECT_EQ(ShownType(), std::nullopt) << attribute;
    EXPECT_FALSE(CapacityIsEnabled());
    Console().Close();
  }
}

TEST_P(UserTabContract, RoomsOfOneCapacityStayRooms) {
  const TabValues room = {{"peloraResourceType", {"room"}}, {"peloraResourceCapacity", {"4"}}};
  OpenUsers({room, room});
  EXPECT_EQ(ShownType(), kRoom);
  EXPECT_TRUE(CapacityIsEnabled());
  Retype(IDC_CAPACITY, "6");
  EXPECT_EQ(Apply(), Lines{"peloraResourceCapacity: 6"});
  EXPECT_EQ(Changes(1), Lines{"peloraResourceCapacity: 6"});
}

TEST_P(UserTabContract, ATypeChosenForSeveralIsWrittenToEachAndNoAddressMissed) {
  OpenUsers({{{"peloraAdmin", {"2"}}}, {}});
  ChooseType(kActiveUser);
  const Lines expected = {"peloraAdmin: 0", "peloraSharedStoreOnly: 0"};
  EXPECT_EQ(Ok(), expected);
  EXPECT_EQ(Changes(1), expected);
}

// The quota.

TEST_P(UserTabContract, TheQuotaBoxSwitchesTheLimitsAndIsWrittenAlone) {
  OpenUser({{"mail", {"a@x.test"}}, {"peloraQuotaHard", {"300"}}});
  EXPECT_EQ(Page().Check(IDC_QUOTA_OVERRIDE), CheckState::kUnchecked);
  EXPECT_FALSE(LimitsAreEnabled());
  User().Click(IDC_QUOTA_OVERRIDE);
  EXPECT_TRUE(LimitsAreEnabled());
  EXPECT_EQ(Apply(), Lines{"peloraQuotaOverride: 1"});
  User().Click(IDC_QUOTA_OVERRIDE);
  EXPECT_FALSE(LimitsAreEnabled());
  EXPECT_EQ(Page().Text(IDC_QUOTA_HARD), "300");
  EXPECT_EQ(Apply(), Lines{"peloraQuotaOverride: 0"});
}

TEST_P(UserTabContract, AUserWithoutQuotaIsLeftWithoutLimits) {
  OpenUser({{"mail", {"a@x.test"}}});
  EXPECT_FALSE(LimitsAreEnabled());
  EXPECT_EQ(Ok(), Lines{});
}

TEST_P(UserTabContract, LimitsAreWrittenAsTypedInAnyOrderOfSizeAndClearedWhenErased) {
  OpenUser({{"mail", {"a@x.test"}}, {"peloraQuotaOverride", {"1"}}, {"peloraQuotaHard", {"300"}}});
  Retype(IDC_QUOTA_WARN, "900");
  Retype(IDC_QUOTA_SOFT, "12abc");
  if (Console().LooksAfterFields()) {
    EXPECT_FALSE(Console().IsApplyEnabled());
    return;
  }
  User().Erase(IDC_QUOTA_HARD);
  EXPECT_EQ(Apply(),
            (Lines{"peloraQuotaHard: none", "peloraQuotaSoft: 12", "peloraQuotaWarn: 900"}));
  Retype(IDC_QUOTA_WARN, "abc");
  Retype(IDC_QUOTA_HARD, "0500");
  EXPECT_EQ(Apply(), (Lines{"peloraQuotaHard: 500", "peloraQuotaWarn: 0"}));
}

TEST_P(UserTabContract, TheLargestLimitIsShownAsItsNumber) {
  OpenUser({{"mail", {"a@x.test"}}, {"peloraQuotaOverride", {"1"}}, {"peloraQuotaHard", {"-1"}}});
  EXPECT_EQ(Page().Text(IDC_QUOTA_HARD), "4294967295");
  if (Console().LooksAfterFields()) {
    EXPECT_EQ(Ok(), Lines{});
    return;
  }
  Retype(IDC_QUOTA_SOFT, "-1");
  EXPECT_EQ(Ok(), Lines{"peloraQuotaSoft: -1"});
}

TEST_P(UserTabContract, DifferencesAreLeftToEachUser) {
  OpenUsers({{{"peloraQuotaOverride", {"1"}}, {"peloraQuotaHard", {"300"}}},
             {{"peloraQuotaHard", {"400"}}, {"peloraAccount", {"0"}}}});
  EXPECT_EQ(Page().Check(IDC_PELORA_ACCOUNT), CheckState::kIndeterminate);
  EXPECT_EQ(Page().Check(IDC_QUOTA_OVERRIDE), CheckState::kIndeterminate);
  EXPECT_EQ(Page().Text(IDC_QUOTA_WARN), "0");
  EXPECT_EQ(Page().Text(IDC_QUOTA_HARD), "");
  EXPECT_FALSE(LimitsAreEnabled());
  User().Click(IDC_PELORA_HIDDEN);
  EXPECT_EQ(Ok(), Lines{"peloraHidden: 1"});
  EXPECT_EQ(Changes(1), Lines{"peloraHidden: 1"});
}

TEST_P(UserTabContract, AThreeStateBoxIsUncheckedCheckedAndWrittenAsItShows) {
  OpenUsers({{{"peloraAccount", {"1"}}}, {{"peloraAccount", {}}}});
  EXPECT_EQ(Page().Check(IDC_PELORA_ACCOUNT), CheckState::kIndeterminate);
  if (!Console().LooksAfterFields()) {
    User().Click(IDC_PELORA_ACCOUNT);
    EXPECT_EQ(Page().Check(IDC_PELORA_ACCOUNT), CheckState::kUnchecked);
  }
  User().Click(IDC_PELORA_ACCOUNT);
  EXPECT_EQ(Page().Check(IDC_PELORA_ACCOUNT), CheckState::kChecked);
  EXPECT_EQ(Ok(), Lines{});
  EXPECT_EQ(Changes(1), Lines{"peloraAccount: 1"});
}

}  // namespace pelora::contract
