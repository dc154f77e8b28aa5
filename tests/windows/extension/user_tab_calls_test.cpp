// SPDX-License-Identifier: Apache-2.0
// What the user tab's lists and fields cause besides what every console has in common: the calls,
// the boxes as the system shows them, and keys.
#include "platform/dialog_controller.h"
#include "tests/windows/extension/user_tab.h"

namespace pelora::windows::test {
namespace {

constexpr ControlId kOk = static_cast<ControlId>(kDialogOk);
constexpr RowIndex kEquipment = 3;

class UserTabCallsTest : public UserTab {
 protected:
  /// "a" in `mail`, and others.
  void OpenWith(const std::vector<std::string>& others) {
    OpenUser(
        {{"mail", Variant::String("a@x.test")}, {"otherMailbox", Variant::StringArray(others)}});
  }
  Lines Addresses() { return Rows(IDC_EMAIL_LIST); }
};

TEST_F(UserTabCallsTest, EachKindOfChangeIsItsCall) {
  OpenUser({{"mail", Variant::String("a@x.test")},
            {"otherMailbox", Variant::String("b@x.test")},
            {"peloraSendAsPrivilege", Variant::String("CN=Bob,DC=x")},
            {"peloraQuotaOverride", Variant::Integer(1)},
            {"peloraQuotaWarn", Variant::Integer(100)},
            {"peloraResourceType", Variant::String("room")},
            {"peloraResourceCapacity", Variant::Integer(12)}});
  ClickRow(IDC_EMAIL_LIST, "b@x.test");
  User().Click(IDC_EMAIL_DELETE);
  ClickRow(IDC_SENDAS_LIST, "CN=Bob,DC=x");
  User().Click(IDC_SENDAS_DELETE);
  User().Erase(IDC_QUOTA_WARN);
  Retype(IDC_QUOTA_HARD, "-1");
  User().ChooseComboRow(IDC_ACCOUNT_TYPE, kEquipment);
  User().Erase(IDC_CAPACITY);
  EXPECT_EQ(Apply(), (Lines{"Put <1> otherMailbox []", "Put <1> peloraSendAsPrivilege []",
                            "PutEx CLEAR <1> peloraQuotaWarn 0", "Put <1> peloraQuotaHard -1",
                            "Put <1> peloraAdmin 0", "Put <1> peloraSharedStoreOnly 1",
                            R"(Put <1> peloraResourceType "equipment")",
                            "PutEx CLEAR <1> peloraResourceCapacity 0", "SetInfo <1>"}));
}

TEST_F(UserTabCallsTest, ADefaultIsWrittenBesideTheWholeListOfTheOthers) {
  OpenWith({"b@x.test"});
  AddAddress("b@x.test");
  AddAddress("c@x.test");
  ClickRow(IDC_EMAIL_LIST, "A@X.TEST");
  EnterAddress(IDC_EMAIL_MODIFY, "z@x.test");
  EXPECT_EQ(Apply(), WithUsual({R"(Put <1> mail "z@x.test")",
                                R"(Put <1> otherMailbox ["b@x.test", "b@x.test", "c@x.test"])"}))
      << "twice is twice";
}

TEST_F(UserTabCallsTest, TheBoxOfAWrongAddressBelongsToItsDialog) {
  OpenWith({});
  boxes_.PlayNext([this](HWND dialog) {
    WindowPlayer user(dialog);
    user.Click(kOk);
    const ShownBox wrong = {.caption = "Error",
                            .text = "Wrong emailaddress",
                            .icon = MessageIcon::kNone,
                            .buttons = {"OK"},
                            .owner = "EmailAddress"};
    EXPECT_EQ(boxes_.TakeBoxes(), std::vector<ShownBox>{wrong});
    EXPECT_NE(IsWindowVisible(dialog), FALSE);
    user.CloseWindow();
  });
  User().Click(IDC_EMAIL_ADD);
}

TEST_F(UserTabCallsTest, TheLastAddressGoesWithAWarning) {
  OpenWith({});
  ClickRow(IDC_EMAIL_LIST, "A@X.TEST");
  EnableWindow(GetDlgItem(sheet().Page(), IDC_EMAIL_DELETE), TRUE);
  User().Click(IDC_EMAIL_DELETE);
  ShownBox warning = ErrorBox("Pelora user requires at least one email address");
  warning.icon = MessageIcon::kWarning;
  EXPECT_EQ(boxes_.TakeBoxes(), std::vector<ShownBox>{warning});
}

TEST_F(UserTabCallsTest, EscapeIsCancel) {
  OpenWith({});
  boxes_.PlayNext([](HWND dialog) {
    WindowPlayer(dialog).Type(IDC_EMAIL_ADDRESS, "c@x.test");
    MSG escape = {.hwnd = GetDlgItem(dialog, IDC_EMAIL_ADDRESS),
                  .message = WM_KEYDOWN,
                  .wParam = VK_ESCAPE,
                  .lParam = 1,
                  .time = 0,
                  .pt = {}};
    IsDialogMessageW(dialog, &escape);
  });
  User().Click(IDC_EMAIL_ADD);
  EXPECT_EQ(Addresses(), Lines{"A@X.TEST"});
}

}  // namespace
}  // namespace pelora::windows::test
