// SPDX-License-Identifier: Apache-2.0
// The user tab in a property sheet of the system's: what it shows, and every call it makes when
// what was edited is applied.
#include <cstdlib>

#include "platform/dialog_controller.h"
#include "resources/resource.h"
#include "tests/windows/support/page_layout.h"
#include "tests/windows/support/screenshot.h"
#include "tests/windows/support/tab_test.h"

namespace pelora::windows::test {
namespace {

using pelora::testing::FakeAttributes;

constexpr const char* kUserTab = "CPropPageUser";
const std::vector<std::string> kNothing;

constexpr const char* kAda = "LDAP://dc1/CN=Ada,OU=Größe,DC=fake,DC=example";
constexpr const char* kBob = "LDAP://dc1/CN=Bob,OU=Größe,DC=fake,DC=example";
constexpr const char* kEve = "LDAP://dc1/CN=Eve,OU=Größe,DC=fake,DC=example";

FakeAttributes Ada() {
  return {{"peloraAccount", Variant::Integer(1)},
          {"mail", Variant::String("ada@example.test")},
          {"otherMailbox", Variant::StringArray({"ada.brandt@example.test", "a@example.test"})},
          {"peloraSendAsPrivilege", Variant::String("CN=Bob,DC=fake,DC=example")},
          {"peloraQuotaOverride", Variant::Integer(1)},
          {"peloraQuotaWarn", Variant::Integer(100)},
          {"peloraQuotaSoft", Variant::Integer(200)},
          {"peloraQuotaHard", Variant::Integer(300)},
          {"peloraAdmin", Variant::Integer(1)},
          {"peloraUserServer", Variant::String("größe-1")}};
}

class UserTabTest : public TabTest {
 protected:
  void OpenOne(FakeAttributes attributes = Ada()) {
    directory().AddObject(kAda, std::move(attributes));
    Open(kUserTab, {kAda});
  }
  void OpenThree() {
    directory().AddObject(kAda, Ada());
    directory().AddObject(kBob, {{"peloraAccount", Variant::Integer(0)},
                                 {"peloraHidden", Variant::Integer(1)},
                                 {"peloraQuotaHard", Variant::Integer(300)},
                                 {"peloraResourceType", Variant::String("room")}});
    directory().AddObject(kEve, {{"peloraQuotaHard", Variant::Integer(300)}});
    Open(kUserTab, {kAda, kBob, kEve});
  }
};

TEST_F(UserTabTest, DialogUnitsAreAsLargeAsOnWindows) {
  OpenOne();
  RECT unit = {0, 0, 4, 8};
  ASSERT_NE(MapDialogRect(sheet().Page(), &unit), FALSE);
  // Dots per inch of this run; elsewhere than on the usual screen the font's own steps round.
  const char* const told = std::getenv("PELORA_DPI");
  const int dpi = told == nullptr ? USER_DEFAULT_SCREEN_DPI : std::stoi(told);
  const double scale = static_cast<double>(dpi) / USER_DEFAULT_SCREEN_DPI;
  const double rounding = dpi == USER_DEFAULT_SCREEN_DPI ? 0 : 1;
  EXPECT_NEAR(unit.right, 6 * scale, rounding);
  EXPECT_NEAR(unit.bottom, 13 * scale, rounding);
}

TEST_F(UserTabTest, ShowsOneUser) {
  OpenOne();
  const std::vector<std::string> expected = {
      R"(- frame "Quota")",
      R"(202 check box "Use user &quota" checked)",
      R"(277 label "Warning at")",
      R"(203 edit "100")",
      R"(- label "Mb")",
      R"(278 label "Soft limit")",
      R"(204 edit "200")",
      R"(- label "Mb")",
      R"(279 label "Hard limit")",
      R"(205 edit "300")",
      R"(- label "Mb")",
      R"(- frame "Other")",
      R"(214 check box "Pelora Account" checked)",
      R"(284 drop-down list "active user" "shared store only" "room" "equipment")"
      R"( *"administrator" "system administrator")",
      R"(243 check box "Hide from addressbook" unchecked)",
      R"(297 label "Capacity" disabled)",
      R"(298 edit "0" disabled)",
      R"(266 frame "Home Server")",
      R"(242 edit "größe-1" read-only)",
      R"(271 button "&Select")",
      R"(247 frame "E-mail addresses")",
      R"(206 list box "a@example.test" "ada.brandt@example.test" "ADA@EXAMPLE.TEST")",
      R"(207 button "&Add")",
      R"(209 button "&Modify" disabled)",
      R"(208 button "&Delete" disabled)",
      R"(213 button "Set as default" disabled)",
      R"(248 frame "Send as")",
      R"(237 list box "CN=Bob,DC=fake,DC=example")",
      R"(238 button "Add")",
      R"(239 button "Delete" disabled)"};
  EXPECT_EQ(Controls(), expected);
  EXPECT_FALSE(sheet().IsApplyEnabled());
  SavePage("user_tab_one");
}

TEST_F(UserTabTest, AnApplyMakesExactlyTheseCalls) {
  OpenOne();
  Retype(IDC_QUOTA_HARD, "0500");
  User().Click(IDC_PELORA_HIDDEN);
  EXPECT_TRUE(sheet().IsApplyEnabled());
  sheet().ClickApply();
  const std::vector<std::string> expected = {"ADsOpenObject <1> 1",
                                             "Put <1> peloraQuotaHard 500",
                                             "Put <1> peloraHidden 1",
                                             R"(PutEx CLEAR <1> peloraResourceType "")",
                                             "Put <1> peloraResourceCapacity 0",
                                             "SetInfo <1>"};
  EXPECT_EQ(console_.TakeCalls(), expected);
  EXPECT_EQ(sheet().AnswersTo(PSN_APPLY), std::vector<LRESULT>{PSNRET_NOERROR});
  EXPECT_FALSE(sheet().IsApplyEnabled());
  EXPECT_EQ(directory().Value(kAda, "peloraQuotaHard"), Variant::Integer(500));
}

TEST_F(UserTabTest, AnAddressIsTypedInADialogOfItsOwn) {
  OpenOne({{"peloraAccount", Variant::Integer(1)}, {"mail", Variant::String("ada@example.test")}});
  boxes_.PlayNext([](HWND dialog) {
    SavePicture(dialog, "email_address");
    EXPECT_EQ(ClippedControls(dialog), std::vector<std::string>());
    WindowPlayer user(dialog);
    user.Type(IDC_EMAIL_ADDRESS, "größe@example.test");
    user.Click(static_cast<ControlId>(kDialogOk));
  });
  User().Click(IDC_EMAIL_ADD);
  EXPECT_EQ(Page().ListBox(IDC_EMAIL_LIST).Count(), 2U);
}

TEST_F(UserTabTest, ShowsThreeUsersThatDiffer) {
  OpenThree();
  const std::vector<std::string> expected = {
      R"(- frame "Quota")",
      R"(202 check box "Use user &quota" indeterminate three-state)",
      R"(277 label "Warning at")",
      R"(203 edit "" disabled)",
      R"(- label "Mb")",
      R"(278 label "Soft limit")",
      R"(204 edit "" disabled)",
      R"(- label "Mb")",
      R"(279 label "Hard limit")",
      R"(205 edit "300" disabled)",
      R"(- label "Mb")",
      R"(- frame "Other")",
      R"(214 check box "Pelora Account" indeterminate three-state)",
      R"(284 drop-down list "active user" "shared store only" "room" "equipment")"
      R"( "administrator" "system administrator")",
      R"(243 check box "Hide from addressbook" indeterminate three-state)",
      R"(297 label "Capacity" disabled)",
      R"(298 edit "0" disabled)",
      R"(266 frame "Home Server")",
      R"(242 edit "" read-only)",
      R"(271 button "&Select")",
      R"(247 frame "E-mail addresses" hidden)",
      R"(206 list box hidden)",
      R"(207 button "&Add" hidden)",
      R"(209 button "&Modify" disabled hidden)",
      R"(208 button "&Delete" disabled hidden)",
      R"(213 button "Set as default" disabled hidden)",
      R"(248 frame "Send as" hidden)",
      R"(237 list box hidden)",
      R"(238 button "Add" hidden)",
      R"(239 button "Delete" disabled hidden)"};
  EXPECT_EQ(Controls(), expected);
  EXPECT_FALSE(sheet().IsApplyEnabled());
  SavePage("user_tab_three");
}

TEST_F(UserTabTest, AnApplyToThreeUsersMakesExactlyTheseCalls) {
  OpenThree();
  User().Click(IDC_PELORA_ACCOUNT);
  EXPECT_EQ(Page().Check(IDC_PELORA_ACCOUNT), CheckState::kUnchecked);
  User().Click(IDC_PELORA_ACCOUNT);
  EXPECT_EQ(Page().Check(IDC_PELORA_ACCOUNT), CheckState::kChecked);
  // Limits that stand for nothing yet cannot be edited.
  EXPECT_FALSE(Page().IsEnabled(IDC_QUOTA_HARD));
  User().Click(IDC_QUOTA_OVERRIDE);
  User().Click(IDC_QUOTA_OVERRIDE);
  EXPECT_TRUE(Page().IsEnabled(IDC_QUOTA_HARD));
  Retype(IDC_QUOTA_HARD, "");
  sheet().ClickApply();
  std::vector<std::string> expected = {"ADsOpenObject <1> 1", "ADsOpenObject <2> 1",
                                       "ADsOpenObject <3> 1"};
  for (const std::string user : {"<1> ", "<2> ", "<3> "}) {
    expected.push_back("PutEx CLEAR " + user + "peloraQuotaHard 0");
    expected.push_back("Put " + user + "peloraQuotaOverride 1");
    expected.push_back("Put " + user + "peloraAccount 1");
    expected.push_back("PutEx CLEAR " + user + R"(peloraResourceType "")");
    expected.push_back("Put " + user + "peloraResourceCapacity 0");
    expected.push_back("SetInfo " + user.substr(0, 3));
  }
  EXPECT_EQ(console_.TakeCalls(), expected);
  EXPECT_EQ(sheet().AnswersTo(PSN_APPLY), std::vector<LRESULT>{PSNRET_NOERROR});
  EXPECT_EQ(directory().Value(kEve, "peloraAccount"), Variant::Integer(1));
  EXPECT_TRUE(directory().Value(kBob, "peloraQuotaHard").IsEmpty());
}

TEST_F(UserTabTest, OnlyTheSheetAndThePageAreListenedTo) {
  OpenOne();
  User().Click(IDC_PELORA_HIDDEN);
  const HWND page = sheet().Page();
  NMHDR notification = {GetDesktopWindow(), 0, PSN_APPLY};
  SendMessageW(page, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notification));
  EXPECT_EQ(console_.TakeCalls(), kNothing);
  notification.hwndFrom = page;
  SendMessageW(page, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notification));
  EXPECT_NE(console_.TakeCalls(), kNothing);
}

}  // namespace
}  // namespace pelora::windows::test
