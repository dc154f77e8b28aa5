// SPDX-License-Identifier: Apache-2.0
// The user tab and the dialog of an address as the system makes them from the module's templates:
// every control, and the way through them by keyboard.
#include "platform/dialog_controller.h"
#include "tests/windows/extension/user_tab.h"
#include "tests/windows/support/control_lines.h"

namespace pelora::windows::test {
namespace {

/// Numbers of the controls that the Tab key reaches, in its order, from the first one on.
std::vector<int> TabOrder(HWND dialog) {
  std::vector<int> order;
  const HWND first = GetNextDlgTabItem(dialog, nullptr, FALSE);
  HWND at = first;
  do {
    order.push_back(GetDlgCtrlID(at));
    at = GetNextDlgTabItem(dialog, at, FALSE);
  } while (at != first && order.size() < 100);
  return order;
}

class UserTabTemplateTest : public UserTab {
 protected:
  /// Shows a page that nothing has been loaded into: its controls are the template's.
  void OpenUnloaded() {
    // The first binding is the test of the connection.
    console_.FailBinding(2, E_FAIL);
    OpenUser({});
    EXPECT_EQ(boxes_.TakeBoxes().size(), 1U);
  }
  LONG_PTR Style(ControlId id) {
    return GetWindowLongPtrW(GetDlgItem(sheet().Page(), static_cast<int>(id)), GWL_STYLE);
  }
};

TEST_F(UserTabTemplateTest, HoldsEveryControlInItsOrder) {
  OpenUnloaded();
  const Lines expected = {R"(- frame "Quota")",
                          R"(202 check box "Use user &quota" unchecked)",
                          R"(277 label "Warning at")",
                          R"(203 edit "")",
                          R"(- label "Mb")",
                          R"(278 label "Soft limit")",
                          R"(204 edit "")",
                          R"(- label "Mb")",
                          R"(279 label "Hard limit")",
                          R"(205 edit "")",
                          R"(- label "Mb")",
                          R"(- frame "Other")",
                          R"(214 check box "Pelora Account" unchecked)",
                          R"(284 drop-down list)",
                          R"(243 check box "Hide from addressbook" unchecked)",
                          R"(297 label "Capacity")",
                          R"(298 edit "")",
                          R"(266 frame "Home Server")",
                          R"(242 edit "" read-only)",
                          R"(271 button "&Select")",
                          R"(247 frame "E-mail addresses")",
                          R"(206 list box)",
                          R"(207 button "&Add")",
                          R"(209 button "&Modify" disabled)",
                          R"(208 button "&Delete" disabled)",
                          R"(213 button "Set as default" disabled)",
                          R"(248 frame "Send as")",
                          R"(237 list box)",
                          R"(238 button "Add")",
                          R"(239 button "Delete" disabled)"};
  EXPECT_EQ(Controls(), expected);
  EXPECT_EQ(sheet().TabText(0), "Pelora");
}

TEST_F(UserTabTemplateTest, ControlsBehaveAsTheirKindsSay) {
  OpenUnloaded();
  EXPECT_NE(Style(IDC_CAPACITY) & ES_NUMBER, 0) << "digits only";
  EXPECT_EQ(Style(IDC_QUOTA_WARN) & ES_NUMBER, 0);
  EXPECT_EQ(Style(IDC_ACCOUNT_TYPE) & 3, CBS_DROPDOWNLIST);
  EXPECT_EQ(Style(IDC_ACCOUNT_TYPE) & CBS_SORT, 0);
  EXPECT_EQ(Style(IDC_EMAIL_LIST) & (LBS_SORT | LBS_NOTIFY | LBS_USETABSTOPS),
            LBS_SORT | LBS_NOTIFY | LBS_USETABSTOPS);
  EXPECT_EQ(Style(IDC_SENDAS_LIST) & (LBS_SORT | LBS_NOTIFY | LBS_USETABSTOPS),
            LBS_SORT | LBS_NOTIFY);
}

TEST_F(UserTabTemplateTest, TheTabKeyGoesFromTopToBottom) {
  OpenUser({{"mail", Variant::String("a@x.test")},
            {"otherMailbox", Variant::String("b@x.test")},
            {"peloraSendAsPrivilege", Variant::String("CN=Bob,DC=x")},
            {"peloraQuotaOverride", Variant::Integer(1)},
            {"peloraResourceType", Variant::String("room")}});
  ClickRow(IDC_EMAIL_LIST, "b@x.test");
  ClickRow(IDC_SENDAS_LIST, "CN=Bob,DC=x");
  EXPECT_EQ(TabOrder(sheet().Page()),
            (std::vector<int>{202, 203, 204, 205, 214, 284, 243, 298, 242, 271, 206, 207, 209, 208,
                              213, 237, 238, 239}));
}

TEST_F(UserTabTemplateTest, TheTabKeyPassesOverWhatCannotBeUsed) {
  OpenUser({});
  EXPECT_EQ(TabOrder(sheet().Page()),
            (std::vector<int>{202, 214, 284, 243, 242, 271, 206, 207, 237, 238}));
}

TEST_F(UserTabTemplateTest, TheDialogOfAnAddressHoldsEveryControl) {
  OpenUser({});
  boxes_.PlayNext([this](HWND dialog) {
    EXPECT_EQ(ControlLines(dialog), (Lines{R"(- label "Emailaddress:")", R"(203 edit "")",
                                           R"(1 default button "OK")", R"(2 button "Cancel")"}));
    std::array<wchar_t, 32> caption{};
    GetWindowTextW(dialog, caption.data(), caption.size());
    EXPECT_STREQ(caption.data(), L"EmailAddress");
    EXPECT_EQ(TabOrder(dialog), (std::vector<int>{203, 1, 2}));
    EXPECT_EQ(GetFocus(), GetDlgItem(dialog, IDC_EMAIL_ADDRESS));
    EXPECT_EQ(GetWindow(dialog, GW_OWNER), sheet().window());
    EXPECT_EQ(IsWindowEnabled(sheet().window()), FALSE);
    WindowPlayer(dialog).Click(static_cast<ControlId>(kDialogCancel));
  });
  SetActiveWindow(sheet().window());
  User().Click(IDC_EMAIL_ADD);
  EXPECT_NE(IsWindowEnabled(sheet().window()), FALSE);
}

}  // namespace
}  // namespace pelora::windows::test
