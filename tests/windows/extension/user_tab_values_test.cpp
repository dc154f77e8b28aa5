// SPDX-License-Identifier: Apache-2.0
// Account type, capacity and quota of users in a sheet of the system's.
#include "tests/windows/extension/user_tab.h"

namespace pelora::windows::test {
namespace {

enum AccountType : RowIndex {
  kActiveUser,
  kSharedStore,
  kRoom,
  kEquipment,
  kAdministrator,
  kSystemAdministrator
};

class UserTabValuesTest : public UserTab {
 protected:
  void OpenWith(FakeAttributes attributes) {
    attributes.emplace("mail", Variant::String("a@x.test"));
    OpenUser(std::move(attributes));
  }
  void ChooseType(AccountType type) { User().ChooseComboRow(IDC_ACCOUNT_TYPE, type); }
  std::optional<RowIndex> ShownType() { return Page().ComboBox(IDC_ACCOUNT_TYPE).Selection(); }
  bool CapacityIsEnabled() {
    EXPECT_EQ(IsEnabled(IDC_CAPACITY), IsEnabled(IDC_CAPACITY_LABEL));
    return IsEnabled(IDC_CAPACITY);
  }
  bool LimitsAreEnabled() {
    EXPECT_EQ(IsEnabled(IDC_QUOTA_WARN), IsEnabled(IDC_QUOTA_SOFT));
    EXPECT_EQ(IsEnabled(IDC_QUOTA_WARN), IsEnabled(IDC_QUOTA_HARD));
    return IsEnabled(IDC_QUOTA_WARN);
  }
  /// Has the sheet apply although nothing was edited, as its OK button does.
  Lines ApplyUntouched() {
    directory().ClearCalls();
    sheet().ClickOk();
    EXPECT_FALSE(sheet().IsOpen());
    return console_.TakeWrites();
  }
};

TEST_F(UserTabValuesTest, AnUntouchedUserHasItsResourceTypeAndCapacityWrittenAndNothingElse) {
  OpenWith({{"otherMailbox", Variant::StringArray({"b@x.test", "c@x.test"})},
            {"peloraSendAsPrivilege", Variant::StringArray({"CN=Bob,DC=x", "CN=Eve,DC=x"})},
            {"peloraHidden", Variant::Integer(1)},
            {"peloraQuotaOverride", Variant::Integer(1)},
            {"peloraQuotaWarn", Variant::Integer(100)},
            {"peloraQuotaSoft", Variant::Integer(200)},
            {"peloraQuotaHard", Variant::Integer(300)},
            {"peloraAdmin", Variant::Integer(2)},
            {"peloraUserServer", Variant::String("node-1")}});
  EXPECT_EQ(ApplyUntouched(), WithUsual({}));
}

TEST_F(UserTabValuesTest, AnUntouchedRoomStaysAsItIs) {
  OpenWith({{"peloraResourceType", Variant::String("room")},
            {"peloraSharedStoreOnly", Variant::Integer(1)},
            {"peloraResourceCapacity", Variant::Integer(12)}});
  const Lines expected = {R"(Put <1> peloraResourceType "room")",
                          "Put <1> peloraResourceCapacity 12", "SetInfo <1>"};
  EXPECT_EQ(ApplyUntouched(), expected);
}

TEST_F(UserTabValuesTest, ARoomInCapitalsIsARoomBeforeAnAdministrator) {
  OpenWith({{"peloraResourceType", Variant::String("ROOM")}, {"peloraAdmin", Variant::Integer(1)}});
  EXPECT_EQ(ShownType(), kRoom);
  EXPECT_TRUE(CapacityIsEnabled());
}

TEST_F(UserTabValuesTest, ASharedStoreComesBeforeAnAdministrator) {
  OpenWith({{"peloraSharedStoreOnly", Variant::Integer(1)}, {"peloraAdmin", Variant::Integer(2)}});
  EXPECT_EQ(ShownType(), kSharedStore);
}

TEST_F(UserTabValuesTest, ALevelBeyondTheListIsKeptAndTheResourceTypeCleared) {
  OpenWith({{"peloraAdmin", Variant::Integer(3)}});
  EXPECT_EQ(ShownType(), std::nullopt);
  EXPECT_EQ(ApplyUntouched(), WithUsual({}));
}

TEST_F(UserTabValuesTest, EachTypeIsWrittenAsWhatItStandsFor) {
  struct Written {
    AccountType type;
    const char* admin;
    const char* shared;
    const char* resource;
  };
  constexpr const char* kCleared = R"(PutEx CLEAR <1> peloraResourceType "")";
  const Written rows[] = {
      {kActiveUser, "Put <1> peloraAdmin 0", "Put <1> peloraSharedStoreOnly 0", kCleared},
      {kSharedStore, "Put <1> peloraAdmin 0", "Put <1> peloraSharedStoreOnly 1", kCleared},
      {kRoom, "Put <1> peloraAdmin 0", "Put <1> peloraSharedStoreOnly 1",
       R"(Put <1> peloraResourceType "room")"},
      {kEquipment, "Put <1> peloraAdmin 0", "Put <1> peloraSharedStoreOnly 1",
       R"(Put <1> peloraResourceType "equipment")"},
      {kAdministrator, "Put <1> peloraAdmin 1", "Put <1> peloraSharedStoreOnly 0", kCleared},
      {kSystemAdministrator, "Put <1> peloraAdmin 2", "Put <1> peloraSharedStoreOnly 0", kCleared},
  };
  OpenWith({{"peloraAdmin", Variant::Integer(3)}});
  for (const Written& row : rows) {
    ChooseType(row.type);
    EXPECT_TRUE(IsModified());
    EXPECT_EQ(CapacityIsEnabled(), row.type == kRoom || row.type == kEquipment);
    const Lines expected = {row.admin, row.shared, row.resource, "Put <1> peloraResourceCapacity 0",
                            "SetInfo <1>"};
    EXPECT_EQ(Apply(), expected) << row.type;
  }
}

TEST_F(UserTabValuesTest, ARoomThatBecomesAnActiveUserKeepsItsCapacity) {
  OpenWith({{"peloraResourceType", Variant::String("room")},
            {"peloraSharedStoreOnly", Variant::Integer(1)},
            {"peloraResourceCapacity", Variant::Integer(12)}});
  ChooseType(kActiveUser);
  EXPECT_EQ(Page().Text(IDC_CAPACITY), "12");
  EXPECT_FALSE(CapacityIsEnabled());
  const Lines expected = {"Put <1> peloraAdmin 0", "Put <1> peloraSharedStoreOnly 0",
                          R"(PutEx CLEAR <1> peloraResourceType "")",
                          "Put <1> peloraResourceCapacity 12", "SetInfo <1>"};
  EXPECT_EQ(Apply(), expected);
}

TEST_F(UserTabValuesTest, ACapacityTypedForARoomIsWrittenEvenWhenTheRoomIsGivenUp) {
  OpenWith({});
  ChooseType(kRoom);
  Retype(IDC_CAPACITY, "8");
  ChooseType(kActiveUser);
  const Lines expected = {"Put <1> peloraAdmin 0", "Put <1> peloraSharedStoreOnly 0",
                          R"(PutEx CLEAR <1> peloraResourceType "")",
                          "Put <1> peloraResourceCapacity 8", "SetInfo <1>"};
  EXPECT_EQ(Apply(), expected);
}

TEST_F(UserTabValuesTest, TheCapacityTakesDigitsOnlyAndCanBeErased) {
  OpenWith({{"peloraResourceType", Variant::String("equipment")}});
  Retype(IDC_CAPACITY, "1a2-");
  EXPECT_EQ(Page().Text(IDC_CAPACITY), "12");
  User().Erase(IDC_CAPACITY);
  const Lines expected = {R"(Put <1> peloraResourceType "equipment")",
                          "PutEx CLEAR <1> peloraResourceCapacity 0", "SetInfo <1>"};
  EXPECT_EQ(Apply(), expected);
}

TEST_F(UserTabValuesTest, TheServerCannotBeTyped) {
  OpenWith({{"peloraUserServer", Variant::String("node-1")}});
  User().Type(IDC_SERVER, "x");
  User().Erase(IDC_SERVER);
  EXPECT_EQ(Page().Text(IDC_SERVER), "node-1");
  EXPECT_FALSE(IsModified());
}

TEST_F(UserTabValuesTest, AUserWithoutQuotaHasLimitsThatCannotBeEdited) {
  OpenWith({});
  EXPECT_EQ(Page().Check(IDC_QUOTA_OVERRIDE), CheckState::kUnchecked);
  EXPECT_FALSE(LimitsAreEnabled());
  EXPECT_EQ(ApplyUntouched(), WithUsual({}));
}

TEST_F(UserTabValuesTest, CheckingTheQuotaEnablesTheLimitsAndWritesTheBoxAlone) {
  OpenWith({{"peloraQuotaHard", Variant::Integer(300)}});
  User().Click(IDC_QUOTA_OVERRIDE);
  EXPECT_TRUE(LimitsAreEnabled());
  EXPECT_EQ(Apply(), WithUsual({"Put <1> peloraQuotaOverride 1"}));
}

TEST_F(UserTabValuesTest, UncheckingTheQuotaKeepsTheLimits) {
  OpenWith(
      {{"peloraQuotaOverride", Variant::Integer(1)}, {"peloraQuotaHard", Variant::Integer(300)}});
  User().Click(IDC_QUOTA_OVERRIDE);
  EXPECT_FALSE(LimitsAreEnabled());
  EXPECT_EQ(Page().Text(IDC_QUOTA_HARD), "300");
  EXPECT_EQ(Apply(), WithUsual({"Put <1> peloraQuotaOverride 0"}));
}

TEST_F(UserTabValuesTest, LimitsAreWrittenAsTypedInAnyOrderOfSize) {
  OpenWith({{"peloraQuotaOverride", Variant::Integer(1)}});
  Retype(IDC_QUOTA_WARN, "900");
  Retype(IDC_QUOTA_SOFT, "12abc");
  Retype(IDC_QUOTA_HARD, "abc");
  EXPECT_EQ(Apply(), WithUsual({"Put <1> peloraQuotaWarn 900", "Put <1> peloraQuotaSoft 12",
                                "Put <1> peloraQuotaHard 0"}));
}

TEST_F(UserTabValuesTest, AnErasedLimitIsCleared) {
  OpenWith(
      {{"peloraQuotaOverride", Variant::Integer(1)}, {"peloraQuotaWarn", Variant::Integer(100)}});
  User().Erase(IDC_QUOTA_WARN);
  EXPECT_EQ(Apply(), WithUsual({"PutEx CLEAR <1> peloraQuotaWarn 0"}));
}

TEST_F(UserTabValuesTest, TheLargestLimitIsShownAsItsNumber) {
  OpenWith(
      {{"peloraQuotaOverride", Variant::Integer(1)}, {"peloraQuotaHard", Variant::Integer(-1)}});
  EXPECT_EQ(Page().Text(IDC_QUOTA_HARD), "4294967295");
  Retype(IDC_QUOTA_SOFT, "-1");
  EXPECT_EQ(Apply(), WithUsual({"Put <1> peloraQuotaSoft -1"}));
}

TEST_F(UserTabValuesTest, UsersThatDifferInAnyTypeAttributeShowNoType) {
  const std::pair<const char*, Variant> differences[] = {
      {"peloraAdmin", Variant::Integer(1)},
      {"peloraSharedStoreOnly", Variant::Integer(1)},
      {"peloraResourceType", Variant::String("room")}};
  for (const auto& [name, value] : differences) {
    OpenUsers({{}, {{name, value}}});
    EXPECT_EQ(ShownType(), std::nullopt) << name;
    EXPECT_FALSE(CapacityIsEnabled());
    console_.Close();
  }
}

TEST_F(UserTabValuesTest, AnUntouchedMixedSelectionLosesTypesAndCapacities) {
  OpenUsers({{{"peloraResourceType", Variant::String("room")},
              {"peloraResourceCapacity", Variant::Integer(4)}},
             {{"peloraResourceType", Variant::String("equipment")},
              {"peloraResourceCapacity", Variant::Integer(9)}}});
  EXPECT_EQ(Page().Text(IDC_CAPACITY), "");
  const Lines expected = {R"(PutEx CLEAR <1> peloraResourceType "")",
                          "PutEx CLEAR <1> peloraResourceCapacity 0",
                          "SetInfo <1>",
                          R"(PutEx CLEAR <2> peloraResourceType "")",
                          "PutEx CLEAR <2> peloraResourceCapacity 0",
                          "SetInfo <2>"};
  EXPECT_EQ(ApplyUntouched(), expected);
}

TEST_F(UserTabValuesTest, ATypeChosenForSeveralIsWrittenToEachAndNoAddressMissed) {
  OpenUsers({{{"peloraAdmin", Variant::Integer(1)}}, {}});
  ChooseType(kActiveUser);
  Lines expected;
  for (const std::string user : {"<1>", "<2>"}) {
    expected.push_back("Put " + user + " peloraAdmin 0");
    expected.push_back("Put " + user + " peloraSharedStoreOnly 0");
    expected.push_back("PutEx CLEAR " + user + R"( peloraResourceType "")");
    expected.push_back("Put " + user + " peloraResourceCapacity 0");
    expected.push_back("SetInfo " + user);
  }
  EXPECT_EQ(Apply(), expected);
}

}  // namespace
}  // namespace pelora::windows::test
