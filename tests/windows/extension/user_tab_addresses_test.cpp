// SPDX-License-Identifier: Apache-2.0
// Addresses of a user in a sheet of the system's: what the lists show, which buttons can be
// pressed, and what an apply writes.
#include "platform/dialog_controller.h"
#include "tests/windows/extension/user_tab.h"

namespace pelora::windows::test {
namespace {

constexpr ControlId kOk = static_cast<ControlId>(kDialogOk);
constexpr ControlId kCancel = static_cast<ControlId>(kDialogCancel);
constexpr RowIndex kSharedStore = 1;

class UserTabAddressesTest : public UserTab {
 protected:
  /// "a" in `mail`, and others.
  void OpenWith(const std::vector<std::string>& others) {
    OpenUser(
        {{"mail", Variant::String("a@x.test")}, {"otherMailbox", Variant::StringArray(others)}});
  }
  void OpenWithoutAddress() { OpenUser({}); }
  Lines Addresses() { return Rows(IDC_EMAIL_LIST); }
  void ClickAddress(std::string_view text) { ClickRow(IDC_EMAIL_LIST, text); }
  /// "&Delete", "&Modify" and "Set as default": which of them can be pressed.
  std::string Buttons() {
    std::string enabled;
    if (IsEnabled(IDC_EMAIL_DELETE)) enabled += "delete ";
    if (IsEnabled(IDC_EMAIL_MODIFY)) enabled += "modify ";
    if (IsEnabled(IDC_EMAIL_DEFAULT)) enabled += "default";
    return enabled;
  }
};

TEST_F(UserTabAddressesTest, TheDefaultIsShownInCapitalsAndTheOthersAsStored) {
  OpenUser({{"mail", Variant::String("größe@x.test")},
            {"otherMailbox", Variant::StringArray({"Zoë@x.test", "b@x.test"})}});
  EXPECT_EQ(Addresses(), (Lines{"b@x.test", "GRÖßE@X.TEST", "Zoë@x.test"}));
}

TEST_F(UserTabAddressesTest, OneOtherAddressIsAListOfOne) {
  OpenUser({{"otherMailbox", Variant::String("b@x.test")}});
  EXPECT_EQ(Addresses(), Lines{"b@x.test"});
}

TEST_F(UserTabAddressesTest, TheFirstAddressBecomesTheDefaultAndLaterOnesDoNot) {
  OpenWithoutAddress();
  AddAddress("First@x.test");
  AddAddress("Second@x.test");
  EXPECT_EQ(Addresses(), (Lines{"FIRST@X.TEST", "Second@x.test"}));
  EXPECT_EQ(Apply(), WithUsual({R"(Put <1> mail "First@x.test")",
                                R"(Put <1> otherMailbox ["Second@x.test"])"}));
}

TEST_F(UserTabAddressesTest, TheOnlyAddressLeavesAnEmptyListOfOthers) {
  OpenWithoutAddress();
  AddAddress("a@x.test");
  EXPECT_EQ(Apply(), WithUsual({R"(Put <1> mail "a@x.test")", "Put <1> otherMailbox []"}));
}

TEST_F(UserTabAddressesTest, TheSameAddressTwiceIsShownAndWrittenTwice) {
  OpenWith({});
  AddAddress("b@x.test");
  AddAddress("b@x.test");
  EXPECT_EQ(Addresses(), (Lines{"A@X.TEST", "b@x.test", "b@x.test"}));
  EXPECT_EQ(Apply(), WithUsual({R"(Put <1> otherMailbox ["b@x.test", "b@x.test"])"}));
}

TEST_F(UserTabAddressesTest, AnAddressOfBlanksIsAccepted) {
  OpenWith({});
  AddAddress("  ");
  EXPECT_EQ(Apply(), WithUsual({R"(Put <1> otherMailbox ["  "])"}));
}

TEST_F(UserTabAddressesTest, AnEmptyAddressIsWrongAndTheDialogStays) {
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
    user.Type(IDC_EMAIL_ADDRESS, "b@x.test");
    user.Click(kOk);
  });
  User().Click(IDC_EMAIL_ADD);
  EXPECT_EQ(Addresses(), (Lines{"A@X.TEST", "b@x.test"}));
}

TEST_F(UserTabAddressesTest, EnterIsOkAndEscapeIsCancel) {
  OpenWith({});
  boxes_.PlayNext([](HWND dialog) {
    WindowPlayer user(dialog);
    user.Type(IDC_EMAIL_ADDRESS, "b@x.test");
    user.PressEnter();
  });
  User().Click(IDC_EMAIL_ADD);
  EXPECT_EQ(Addresses(), (Lines{"A@X.TEST", "b@x.test"}));
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
  EXPECT_EQ(Addresses(), (Lines{"A@X.TEST", "b@x.test"}));
}

TEST_F(UserTabAddressesTest, ACancelledAddressChangesNothing) {
  OpenWith({"b@x.test"});
  for (const bool by_window : {false, true}) {
    boxes_.PlayNext([by_window](HWND dialog) {
      WindowPlayer user(dialog);
      user.Type(IDC_EMAIL_ADDRESS, "c@x.test");
      by_window ? user.CloseWindow() : user.Click(kCancel);
    });
    User().Click(IDC_EMAIL_ADD);
  }
  EXPECT_EQ(Addresses(), (Lines{"A@X.TEST", "b@x.test"}));
  EXPECT_FALSE(IsModified());
}

TEST_F(UserTabAddressesTest, ModifyingShowsTheAddressAsStored) {
  OpenWith({"b@x.test"});
  ClickAddress("A@X.TEST");
  boxes_.PlayNext([](HWND dialog) {
    EXPECT_EQ(Win32Dialog(dialog, DialogRole::kModal).Text(IDC_EMAIL_ADDRESS), "a@x.test");
    WindowPlayer(dialog).Click(kCancel);
  });
  User().Click(IDC_EMAIL_MODIFY);
  EXPECT_FALSE(IsModified());
}

TEST_F(UserTabAddressesTest, AnotherLetterCaseIsAChange) {
  OpenWith({"b@x.test"});
  ClickAddress("b@x.test");
  EnterAddress(IDC_EMAIL_MODIFY, "B@x.test");
  EXPECT_EQ(Addresses(), (Lines{"A@X.TEST", "B@x.test"}));
  EXPECT_EQ(Apply(), WithUsual({R"(Put <1> otherMailbox ["B@x.test"])"}));
}

TEST_F(UserTabAddressesTest, TheSameTextIsNoChangeAlthoughThePageIsModified) {
  OpenWith({"b@x.test"});
  ClickAddress("b@x.test");
  EnterAddress(IDC_EMAIL_MODIFY, "b@x.test");
  EXPECT_TRUE(IsModified());
  EXPECT_EQ(Apply(), WithUsual({}));
}

TEST_F(UserTabAddressesTest, AModifiedDefaultIsWrittenToMail) {
  OpenWith({"b@x.test"});
  ClickAddress("A@X.TEST");
  EnterAddress(IDC_EMAIL_MODIFY, "z@x.test");
  EXPECT_EQ(Addresses(), (Lines{"b@x.test", "Z@X.TEST"}));
  EXPECT_EQ(Apply(),
            WithUsual({R"(Put <1> mail "z@x.test")", R"(Put <1> otherMailbox ["b@x.test"])"}));
}

TEST_F(UserTabAddressesTest, DeletingTheDefaultPassesItToTheFirstAddressAsLoaded) {
  OpenWith({"z@x.test", "b@x.test"});
  ClickAddress("A@X.TEST");
  User().Click(IDC_EMAIL_DELETE);
  EXPECT_EQ(Addresses(), (Lines{"b@x.test", "Z@X.TEST"}));
  EXPECT_EQ(Apply(),
            WithUsual({R"(Put <1> mail "z@x.test")", R"(Put <1> otherMailbox ["b@x.test"])"}));
}

TEST_F(UserTabAddressesTest, DeletingKeepsTheSelectionAtItsPlace) {
  OpenWith({"b@x.test", "c@x.test", "d@x.test"});
  const auto selected = [this] {
    Win32Dialog page = Page();
    const IListBox& list = page.ListBox(IDC_EMAIL_LIST);
    return list.Selection() ? list.Text(*list.Selection()) : std::string("nothing");
  };
  ClickAddress("c@x.test");
  User().Click(IDC_EMAIL_DELETE);
  EXPECT_EQ(selected(), "d@x.test") << "in the middle";
  User().Click(IDC_EMAIL_DELETE);
  EXPECT_EQ(selected(), "b@x.test") << "the last row";
  EXPECT_EQ(Buttons(), "delete modify default");
  EXPECT_EQ(Apply(), WithUsual({R"(Put <1> otherMailbox ["b@x.test"])"}));
}

TEST_F(UserTabAddressesTest, DeletingEveryAddressWritesAnEmptyListAndLeavesMail) {
  OpenWith({"b@x.test"});
  User().ChooseComboRow(IDC_ACCOUNT_TYPE, kSharedStore);
  ClickAddress("A@X.TEST");
  User().Click(IDC_EMAIL_DELETE);
  User().Click(IDC_EMAIL_DELETE);
  EXPECT_EQ(Addresses(), Lines{});
  EXPECT_EQ(Buttons(), "");
  const Lines expected = {
      "Put <1> otherMailbox []",          "Put <1> peloraAdmin 0",
      "Put <1> peloraSharedStoreOnly 1",  R"(PutEx CLEAR <1> peloraResourceType "")",
      "Put <1> peloraResourceCapacity 0", "SetInfo <1>"};
  EXPECT_EQ(Apply(), expected);
}

TEST_F(UserTabAddressesTest, ADefaultChangesPlacesWithAnother) {
  OpenWith({"b@x.test"});
  ClickAddress("b@x.test");
  User().Click(IDC_EMAIL_DEFAULT);
  EXPECT_EQ(Addresses(), (Lines{"a@x.test", "B@X.TEST"}));
  EXPECT_EQ(Apply(),
            WithUsual({R"(Put <1> mail "b@x.test")", R"(Put <1> otherMailbox ["a@x.test"])"}));
}

TEST_F(UserTabAddressesTest, TheDefaultAsDefaultAgainWritesNothingAlthoughThePageIsModified) {
  OpenWith({"b@x.test"});
  ClickAddress("A@X.TEST");
  User().Click(IDC_EMAIL_DEFAULT);
  EXPECT_TRUE(IsModified());
  EXPECT_EQ(Apply(), WithUsual({}));
}

TEST_F(UserTabAddressesTest, ADeletedDefaultLeavesTwoOfThemBehindWhenAThirdIsSet) {
  OpenWith({"b@x.test", "c@x.test", "d@x.test"});
  ClickAddress("A@X.TEST");
  User().Click(IDC_EMAIL_DELETE);
  ClickAddress("c@x.test");
  User().Click(IDC_EMAIL_DEFAULT);
  EXPECT_EQ(Addresses(), (Lines{"B@X.TEST", "C@X.TEST", "d@x.test"}));
  EXPECT_EQ(Apply(),
            WithUsual({R"(Put <1> mail "c@x.test")", R"(Put <1> otherMailbox ["d@x.test"])"}));
}

TEST_F(UserTabAddressesTest, ButtonsFollowTheSelectionOfSeveralAddresses) {
  OpenWith({"b@x.test"});
  EXPECT_EQ(Buttons(), "");
  ClickAddress("b@x.test");
  EXPECT_EQ(Buttons(), "delete modify default");
}

TEST_F(UserTabAddressesTest, TheOnlyAddressOfAnActiveUserCannotBeDeleted) {
  OpenWith({});
  ClickAddress("A@X.TEST");
  EXPECT_EQ(Buttons(), "modify ");
  User().Click(IDC_EMAIL_DELETE);
  EXPECT_EQ(Addresses(), Lines{"A@X.TEST"});
}

TEST_F(UserTabAddressesTest, TheOnlyAddressOfASharedStoreCanBeDeleted) {
  OpenWith({});
  User().ChooseComboRow(IDC_ACCOUNT_TYPE, kSharedStore);
  ClickAddress("A@X.TEST");
  EXPECT_EQ(Buttons(), "delete modify ");
}

TEST_F(UserTabAddressesTest, DeletingTheLastRequiredAddressWarnsAndDeletesAllTheSame) {
  OpenWith({});
  ClickAddress("A@X.TEST");
  // Enabled otherwise than by the page.
  EnableWindow(GetDlgItem(sheet().Page(), IDC_EMAIL_DELETE), TRUE);
  User().Click(IDC_EMAIL_DELETE);
  ShownBox warning = ErrorBox("Pelora user requires at least one email address");
  warning.icon = MessageIcon::kWarning;
  EXPECT_EQ(boxes_.TakeBoxes(), std::vector<ShownBox>{warning});
  EXPECT_EQ(Addresses(), Lines{});
}

TEST_F(UserTabAddressesTest, AnActiveUserWithoutAddressIsRefused) {
  OpenWithoutAddress();
  User().Click(IDC_PELORA_HIDDEN);
  EXPECT_EQ(Apply(), Lines{});
  EXPECT_EQ(boxes_.TakeBoxes(),
            std::vector<ShownBox>{ErrorBox("Validation of input fields failed: Missing Email "
                                           "Address\r\n\r\nError code: 0X80004005")});
  EXPECT_EQ(sheet().AnswersTo(PSN_APPLY), std::vector<LRESULT>{PSNRET_INVALID_NOCHANGEPAGE});
  EXPECT_TRUE(IsModified());
}

TEST_F(UserTabAddressesTest, WithoutAnAccountNoAddressIsMissed) {
  OpenWithoutAddress();
  User().Click(IDC_PELORA_ACCOUNT);
  EXPECT_EQ(Apply(), WithUsual({"Put <1> peloraAccount 0"}));
}

}  // namespace
}  // namespace pelora::windows::test
