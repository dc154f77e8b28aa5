// SPDX-License-Identifier: Apache-2.0
// The user tab in a property sheet of the system's: what it shows, and every call it makes when
// what was edited is applied.
#include <gmock/gmock.h>

#include "hosts/windows/dialogs/win32_dialog.h"
#include "platform/dialog_controller.h"
#include "resources/resource.h"
#include "tests/windows/extension/console.h"
#include "tests/windows/extension/extension_test.h"
#include "tests/windows/extension/page_layout.h"
#include "tests/windows/support/message_box_reader.h"
#include "tests/windows/support/screenshot.h"

namespace pelora::windows::test {
namespace {

using pelora::testing::FakeAttributes;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

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

class UserTabTest : public ExtensionTest {
 protected:
  ~UserTabTest() override {
    console_.Close();
    EXPECT_THAT(boxes_.boxes(), IsEmpty());
    EXPECT_EQ(console_.directory().live_objects(), 0U);
    EXPECT_EQ(console_.selection().references(), 0U);
    EXPECT_EQ(CanUnloadNow(), S_OK);
  }

  void OpenOne(FakeAttributes attributes = Ada()) {
    console_.directory().AddObject(kAda, std::move(attributes));
    Open({kAda});
  }
  void OpenThree() {
    console_.directory().AddObject(kAda, Ada());
    console_.directory().AddObject(kBob, {{"peloraAccount", Variant::Integer(0)},
                                          {"peloraHidden", Variant::Integer(1)},
                                          {"peloraQuotaHard", Variant::Integer(300)},
                                          {"peloraResourceType", Variant::String("room")}});
    console_.directory().AddObject(kEve, {{"peloraQuotaHard", Variant::Integer(300)}});
    Open({kAda, kBob, kEve});
  }
  void Open(const std::vector<std::string>& paths) {
    console_.Select(paths);
    ASSERT_TRUE(console_.Open("CPropPageUser"));
    boxes_.Ignore(console_.sheet().window());
    console_.directory().ClearCalls();
  }

  Win32Dialog Page() { return {console_.sheet().Page(), DialogRole::kPage}; }
  WindowPlayer User() { return console_.User(); }
  std::vector<std::string> Log() { return console_.directory().Log(); }

  void Retype(ControlId id, std::string_view text) {
    User().Erase(id);
    User().Type(id, text);
  }

  Console console_;
  MessageBoxReader boxes_;
};

TEST_F(UserTabTest, DialogUnitsAreAsLargeAsOnWindows) {
  OpenOne();
  RECT unit = {0, 0, 4, 8};
  ASSERT_NE(MapDialogRect(console_.sheet().Page(), &unit), FALSE);
  EXPECT_EQ(unit.right, 6);
  EXPECT_EQ(unit.bottom, 13);
}

TEST_F(UserTabTest, NothingIsClipped) {
  OpenOne();
  SavePicture(console_.sheet().window(), "user_tab_one");
  EXPECT_THAT(ClippedControls(console_.sheet().Page()), IsEmpty());
}

TEST_F(UserTabTest, ShowsOneUser) {
  OpenOne();
  Win32Dialog page = Page();
  EXPECT_EQ(page.Check(IDC_PELORA_ACCOUNT), CheckState::kChecked);
  EXPECT_EQ(page.Check(IDC_PELORA_HIDDEN), CheckState::kUnchecked);
  EXPECT_EQ(page.Check(IDC_QUOTA_OVERRIDE), CheckState::kChecked);
  EXPECT_EQ(page.Text(IDC_QUOTA_WARN), "100");
  EXPECT_EQ(page.Text(IDC_QUOTA_HARD), "300");
  EXPECT_EQ(page.Text(IDC_SERVER), "größe-1");
  EXPECT_EQ(page.Text(IDC_CAPACITY), "0");
  EXPECT_FALSE(page.IsEnabled(IDC_CAPACITY));
  IComboBox& types = page.ComboBox(IDC_ACCOUNT_TYPE);
  EXPECT_EQ(types.Count(), 6U);
  EXPECT_EQ(types.Selection(), 4U);
  EXPECT_EQ(page.ListBox(IDC_EMAIL_LIST).Count(), 3U);
  EXPECT_EQ(page.ListBox(IDC_SENDAS_LIST).Count(), 1U);
  EXPECT_TRUE(page.IsShown(IDC_EMAIL_LIST));
  EXPECT_FALSE(console_.sheet().IsApplyEnabled());
}

TEST_F(UserTabTest, AnApplyMakesExactlyTheseCalls) {
  OpenOne();
  Retype(IDC_QUOTA_HARD, "0500");
  User().Click(IDC_PELORA_HIDDEN);
  EXPECT_TRUE(console_.sheet().IsApplyEnabled());
  console_.sheet().ClickApply();
  const std::string ada = kAda;
  EXPECT_THAT(Log(), ElementsAre("ADsOpenObject " + ada + " 1",          //
                                 "Put " + ada + " peloraQuotaHard 500",  //
                                 "Put " + ada + " peloraHidden 1",
                                 "PutEx CLEAR " + ada + " peloraResourceType \"\"",
                                 "Put " + ada + " peloraResourceCapacity 0",  //
                                 "SetInfo " + ada));
  EXPECT_THAT(console_.sheet().AnswersTo(PSN_APPLY), ElementsAre(PSNRET_NOERROR));
  EXPECT_FALSE(console_.sheet().IsApplyEnabled());
  EXPECT_EQ(console_.directory().Value(kAda, "peloraQuotaHard"), Variant::Integer(500));
}

TEST_F(UserTabTest, AnAddressIsTypedInADialogOfItsOwn) {
  OpenOne({{"peloraAccount", Variant::Integer(1)}, {"mail", Variant::String("ada@example.test")}});
  ModalWatcher typist([](HWND dialog) {
    SavePicture(dialog, "email_address");
    EXPECT_THAT(ClippedControls(dialog), IsEmpty());
    WindowPlayer user(dialog);
    user.Type(IDC_EMAIL_ADDRESS, "größe@example.test");
    user.Click(static_cast<ControlId>(kDialogOk));
  });
  boxes_.Pause();
  User().Click(IDC_EMAIL_ADD);
  boxes_.Resume();
  EXPECT_EQ(Page().ListBox(IDC_EMAIL_LIST).Count(), 2U);
  console_.sheet().ClickApply();
  EXPECT_EQ(console_.directory().Value(kAda, "otherMailbox"),
            Variant::String("größe@example.test"));
  EXPECT_EQ(console_.directory().Value(kAda, "mail"), Variant::String("ada@example.test"));
}

TEST_F(UserTabTest, ShowsThreeUsersThatDiffer) {
  OpenThree();
  Win32Dialog page = Page();
  for (const ControlId box : {IDC_PELORA_ACCOUNT, IDC_PELORA_HIDDEN, IDC_QUOTA_OVERRIDE}) {
    EXPECT_EQ(page.Style(box), ButtonStyle::kAutoThreeState) << box;
    EXPECT_EQ(page.Check(box), CheckState::kIndeterminate) << box;
  }
  EXPECT_EQ(page.Text(IDC_QUOTA_WARN), "");
  EXPECT_EQ(page.Text(IDC_QUOTA_HARD), "300");
  EXPECT_EQ(page.ComboBox(IDC_ACCOUNT_TYPE).Selection(), std::nullopt);
  for (const ControlId id :
       {IDC_EMAIL_LIST, IDC_SENDAS_LIST, IDC_EMAIL_GROUP, IDC_SENDAS_GROUP, IDC_EMAIL_ADD,
        IDC_EMAIL_DELETE, IDC_EMAIL_MODIFY, IDC_EMAIL_DEFAULT, IDC_SENDAS_ADD, IDC_SENDAS_DELETE}) {
    EXPECT_FALSE(page.IsShown(id)) << id;
  }
  EXPECT_FALSE(console_.sheet().IsApplyEnabled());
  SavePicture(console_.sheet().window(), "user_tab_three");
  EXPECT_THAT(ClippedControls(console_.sheet().Page()), IsEmpty());
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
  console_.sheet().ClickApply();
  std::vector<std::string> expected;
  for (const std::string path : {kAda, kBob, kEve}) {
    expected.push_back("ADsOpenObject " + path + " 1");
  }
  for (const std::string path : {kAda, kBob, kEve}) {
    expected.push_back("PutEx CLEAR " + path + " peloraQuotaHard 0");
    expected.push_back("Put " + path + " peloraQuotaOverride 1");
    expected.push_back("Put " + path + " peloraAccount 1");
    expected.push_back("PutEx CLEAR " + path + " peloraResourceType \"\"");
    expected.push_back("Put " + path + " peloraResourceCapacity 0");
    expected.push_back("SetInfo " + path);
  }
  EXPECT_EQ(Log(), expected);
  EXPECT_THAT(console_.sheet().AnswersTo(PSN_APPLY), ElementsAre(PSNRET_NOERROR));
  EXPECT_EQ(console_.directory().Value(kEve, "peloraAccount"), Variant::Integer(1));
  EXPECT_TRUE(console_.directory().Value(kBob, "peloraQuotaHard").IsEmpty());
}

TEST_F(UserTabTest, OkAppliesAndClosesTheSheet) {
  OpenOne();
  User().Click(IDC_PELORA_HIDDEN);
  console_.sheet().ClickOk();
  EXPECT_FALSE(console_.sheet().IsOpen());
  EXPECT_EQ(console_.directory().Value(kAda, "peloraHidden"), Variant::Integer(1));
}

TEST_F(UserTabTest, CancelWritesNothing) {
  OpenOne();
  User().Click(IDC_PELORA_HIDDEN);
  Retype(IDC_QUOTA_HARD, "7");
  console_.sheet().ClickCancel();
  EXPECT_FALSE(console_.sheet().IsOpen());
  EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(UserTabTest, LeavingThePageIsAlwaysAllowed) {
  OpenOne();
  for (const UINT code :
       {PSN_KILLACTIVE, PSN_QUERYCANCEL, PSN_WIZBACK, PSN_WIZNEXT, PSN_WIZFINISH, PSN_SETACTIVE}) {
    const HWND page = console_.sheet().Page();
    NMHDR from_sheet = {console_.sheet().window(), 0, code};
    EXPECT_EQ(SendMessageW(page, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&from_sheet)), 0) << code;
  }
  EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(UserTabTest, OnlyTheSheetAndThePageAreListenedTo) {
  OpenOne();
  User().Click(IDC_PELORA_HIDDEN);
  const HWND page = console_.sheet().Page();
  NMHDR notification = {GetDesktopWindow(), 0, PSN_APPLY};
  SendMessageW(page, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notification));
  EXPECT_THAT(Log(), IsEmpty());
  notification.hwndFrom = page;
  SendMessageW(page, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notification));
  EXPECT_FALSE(Log().empty());
}

}  // namespace
}  // namespace pelora::windows::test
