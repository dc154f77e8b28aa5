// SPDX-License-Identifier: Apache-2.0
// Delegates and home server of a user, chosen in the system's object picker.
#include "tests/windows/extension/user_tab.h"
#include "tests/windows/support/stand_in_picker.h"

namespace pelora::windows::test {
namespace {

constexpr const char* kBob = "LDAP://dc1/CN=Bob,DC=fake,DC=example";
constexpr const char* kStaff = "LDAP://dc1/CN=Größe 月🌙,DC=fake,DC=example";
constexpr const char* kServer = "LDAP://dc1/CN=node-2,OU=Servers,DC=fake,DC=example";
constexpr const char* kBobName = "CN=Bob,DC=fake,DC=example";
constexpr const char* kStaffName = "CN=Größe 月🌙,DC=fake,DC=example";

class UserTabChoosersTest : public UserTab {
 protected:
  UserTabChoosersTest() {
    directory().AddObject(kBob, {{"distinguishedName", Variant::String(kBobName)}});
    directory().AddObject(kStaff, {{"distinguishedName", Variant::String(kStaffName)}});
    directory().AddObject(kServer, {{"cn", Variant::String("nöde-2")}});
  }
  ~UserTabChoosersTest() override { EXPECT_EQ(picker_.references(), 0U); }

  void OpenWith(const std::vector<std::string>& delegates) {
    OpenUser({{"mail", Variant::String("a@x.test")},
              {"peloraUserServer", Variant::String("node-1")},
              {"peloraSendAsPrivilege", Variant::StringArray(delegates)}});
  }
  void Pick(ControlId button, const std::vector<std::string>& paths) {
    PickedObjects picked(paths);
    picker_.Choose(picked);
    User().Click(button);
    EXPECT_EQ(picked.references(), 0U);
    EXPECT_EQ(picked.released(), 1U);
    EXPECT_EQ(picked.locks(), 0U);
  }
  Lines Delegates() { return Rows(IDC_SENDAS_LIST); }

  StandInPicker picker_;
};

TEST_F(UserTabChoosersTest, DelegatesAreUsersAndGroupsChosenOverTheButton) {
  OpenWith({});
  User().Click(IDC_SENDAS_ADD);
  const Lines expected = {
      "Initialize size 48, computer null, options 0x3, attributes 0 null, scopes 1",
      "scope size 56, type 0x37f, flags 0xc5, both 0x3f2, mixed 0x3f2, native 0x3f2, "
      "down 0x80008007, controller null, path null, status 0x0",
      "InvokeDialog"};
  EXPECT_EQ(picker_.log(), expected);
  EXPECT_EQ(picker_.owner(), GetDlgItem(sheet().Page(), IDC_SENDAS_ADD));
}

TEST_F(UserTabChoosersTest, ChosenDelegatesAreAppendedInThePickersOrder) {
  OpenWith({"CN=Mia,DC=fake,DC=example"});
  Pick(IDC_SENDAS_ADD, {kStaff, kBob});
  EXPECT_EQ(Delegates(), (Lines{kBobName, kStaffName, "CN=Mia,DC=fake,DC=example"}));
  EXPECT_TRUE(IsModified());
  EXPECT_EQ(Apply(), WithUsual({R"(Put <1> peloraSendAsPrivilege ["CN=Mia,DC=fake,DC=example", )"
                                R"("CN=Größe 月🌙,DC=fake,DC=example", )"
                                R"("CN=Bob,DC=fake,DC=example"])"}));
}

TEST_F(UserTabChoosersTest, ADelegateMayBeListedTwice) {
  OpenWith({kBobName});
  Pick(IDC_SENDAS_ADD, {kBob});
  EXPECT_EQ(Delegates(), (Lines{kBobName, kBobName}));
}

TEST_F(UserTabChoosersTest, DeletedObjectsAreNotShownAndLostAtTheNextChange) {
  OpenWith({"CN=Gone\\0ADEL:4f2a,CN=Deleted Objects,DC=fake,DC=example", kStaffName});
  EXPECT_EQ(Delegates(), Lines{kStaffName});
  Pick(IDC_SENDAS_ADD, {kBob});
  EXPECT_EQ(Apply(),
            WithUsual({R"(Put <1> peloraSendAsPrivilege ["CN=Größe 月🌙,DC=fake,DC=example", )"
                       R"("CN=Bob,DC=fake,DC=example"])"}));
}

TEST_F(UserTabChoosersTest, NoChoiceOfDelegatesChangesAnything) {
  OpenWith({kStaffName});
  User().Click(IDC_SENDAS_ADD);
  picker_.Answer(E_ACCESSDENIED);
  User().Click(IDC_SENDAS_ADD);
  picker_.FailInitialize(E_FAIL);
  User().Click(IDC_SENDAS_ADD);
  picker_.FailInitialize(S_OK);
  Pick(IDC_SENDAS_ADD, {});
  Pick(IDC_SENDAS_ADD, {kBob, "LDAP://dc1/CN=Nobody,DC=fake,DC=example"});
  picker_.class_object().FailWith(REGDB_E_CLASSNOTREG);
  User().Click(IDC_SENDAS_ADD);
  EXPECT_EQ(picker_.class_object().activations(), 6U);
  EXPECT_EQ(Delegates(), Lines{kStaffName});
  EXPECT_FALSE(IsModified());
}

TEST_F(UserTabChoosersTest, ADelegateIsDeletedAndTheListWrittenWhole) {
  OpenWith({kBobName, kStaffName});
  EXPECT_FALSE(IsEnabled(IDC_SENDAS_DELETE));
  ClickRow(IDC_SENDAS_LIST, kBobName);
  EXPECT_TRUE(IsEnabled(IDC_SENDAS_DELETE));
  User().Click(IDC_SENDAS_DELETE);
  EXPECT_TRUE(IsEnabled(IDC_SENDAS_DELETE));
  EXPECT_EQ(Apply(), WithUsual({R"(Put <1> peloraSendAsPrivilege )"
                                R"(["CN=Größe 月🌙,DC=fake,DC=example"])"}));
}

TEST_F(UserTabChoosersTest, DeletingTheLastDelegateDisablesTheButtonAndWritesAnEmptyList) {
  OpenWith({kBobName});
  ClickRow(IDC_SENDAS_LIST, kBobName);
  User().Click(IDC_SENDAS_DELETE);
  EXPECT_FALSE(IsEnabled(IDC_SENDAS_DELETE));
  EXPECT_EQ(Delegates(), Lines{});
  EXPECT_EQ(Apply(), WithUsual({"Put <1> peloraSendAsPrivilege []"}));
}

TEST_F(UserTabChoosersTest, TheServerIsOneComputerChosenOverThePage) {
  OpenWith({});
  User().Click(IDC_SERVER_SELECT);
  const Lines expected = {
      "Initialize size 48, computer null, options 0x2, attributes 0 null, scopes 1",
      "scope size 56, type 0x6, flags 0x0, both 0x800, mixed 0x0, native 0x0, down 0x80000008, "
      "controller null, path null, status 0x0",
      "InvokeDialog"};
  EXPECT_EQ(picker_.log(), expected);
  EXPECT_EQ(picker_.owner(), sheet().Page());
}

TEST_F(UserTabChoosersTest, TheServersNameIsShownAndWritten) {
  OpenWith({});
  Pick(IDC_SERVER_SELECT, {kServer});
  EXPECT_EQ(Page().Text(IDC_SERVER), "nöde-2");
  EXPECT_TRUE(IsModified());
  const Lines expected = {R"(PutEx CLEAR <1> peloraResourceType "")",
                          "Put <1> peloraResourceCapacity 0",
                          R"(Put <1> peloraUserServer "nöde-2")", "SetInfo <1>"};
  EXPECT_EQ(Apply(), expected);
  // Once.
  User().Click(IDC_PELORA_HIDDEN);
  EXPECT_EQ(Apply(), WithUsual({"Put <1> peloraHidden 1"}));
}

TEST_F(UserTabChoosersTest, NoChoiceOfAServerChangesAnything) {
  OpenWith({});
  User().Click(IDC_SERVER_SELECT);
  Pick(IDC_SERVER_SELECT, {});
  // A user has no cn here.
  Pick(IDC_SERVER_SELECT, {kBob});
  EXPECT_EQ(Page().Text(IDC_SERVER), "node-1");
  EXPECT_FALSE(IsModified());
}

TEST_F(UserTabChoosersTest, AServerChosenForSeveralUsersIsWrittenToEach) {
  OpenUsers({{{"peloraUserServer", Variant::String("node-1")}}, {}});
  EXPECT_EQ(Page().Text(IDC_SERVER), "");
  Pick(IDC_SERVER_SELECT, {kServer});
  const Lines expected = {
      R"(PutEx CLEAR <1> peloraResourceType "")", "Put <1> peloraResourceCapacity 0",
      R"(Put <1> peloraUserServer "nöde-2")",     "SetInfo <1>",
      R"(PutEx CLEAR <2> peloraResourceType "")", "Put <2> peloraResourceCapacity 0",
      R"(Put <2> peloraUserServer "nöde-2")",     "SetInfo <2>"};
  EXPECT_EQ(Apply(), expected);
}

TEST_F(UserTabChoosersTest, ThePickersObjectsAreBoundOneByOne) {
  OpenWith({});
  directory().ClearCalls();
  Pick(IDC_SENDAS_ADD, {kStaff, kBob});
  const Lines expected = {"ADsOpenObject " + std::string(kStaff) + " 1",
                          "Get " + std::string(kStaff) + " distinguishedName",
                          "ADsOpenObject " + std::string(kBob) + " 1",
                          "Get " + std::string(kBob) + " distinguishedName"};
  EXPECT_EQ(console_.TakeCalls(), expected);
  EXPECT_EQ(directory().live_objects(), 0U);
}

}  // namespace
}  // namespace pelora::windows::test
