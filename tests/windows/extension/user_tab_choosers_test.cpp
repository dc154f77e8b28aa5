// SPDX-License-Identifier: Apache-2.0
// The system's object picker as the user tab sets it up, and what becomes of what it hands out.
#include "tests/windows/extension/user_tab.h"
#include "tests/windows/support/stand_in_picker.h"

namespace pelora::windows::test {
namespace {

constexpr const char* kBob = "LDAP://dc1/CN=Bob,DC=fake,DC=example";
constexpr const char* kStaff = "LDAP://dc1/CN=Größe 月🌙,DC=fake,DC=example";
constexpr const char* kBobName = "CN=Bob,DC=fake,DC=example";
constexpr const char* kStaffName = "CN=Größe 月🌙,DC=fake,DC=example";

class UserTabChoosersTest : public UserTab {
 protected:
  UserTabChoosersTest() {
    directory().AddObject(kBob, {{"distinguishedName", Variant::String(kBobName)}});
    directory().AddObject(kStaff, {{"distinguishedName", Variant::String(kStaffName)}});
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

TEST_F(UserTabChoosersTest, NoChoiceOfAServerChangesAnything) {
  OpenWith({});
  User().Click(IDC_SERVER_SELECT);
  Pick(IDC_SERVER_SELECT, {});
  // A user has no cn here.
  Pick(IDC_SERVER_SELECT, {kBob});
  EXPECT_EQ(Page().Text(IDC_SERVER), "node-1");
  EXPECT_FALSE(IsModified());
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
