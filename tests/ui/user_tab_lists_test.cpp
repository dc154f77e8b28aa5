// SPDX-License-Identifier: Apache-2.0
// Addresses and delegates of a user in the console, from the click to the directory file.
#include <gmock/gmock.h>

#include <QLineEdit>

#include "platform/dialog_controller.h"
#include "tests/ui/user_tab.h"

namespace pelora::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr RowIndex kSharedStore = 1;

class UserTabLists : public UserTab {
 protected:
  /// "a" in `mail`, and others.
  void OpenWith(const std::vector<std::string>& others) {
    Values values = {{"mail", "a@x.test"}};
    for (const std::string& other : others) values.emplace_back("otherMailbox", other);
    OpenUser(values);
  }
  void OpenWithDelegates(const std::vector<std::string>& names) {
    Values values = {{"mail", "a@x.test"}};
    for (const std::string& name : names) values.emplace_back("peloraSendAsPrivilege", name);
    OpenUser(values);
  }
  Lines Addresses() { return Rows(IDC_EMAIL_LIST); }
  void ClickAddress(std::string_view text) { ClickRow(IDC_EMAIL_LIST, text); }
  std::string Buttons() {
    std::string enabled;
    if (page().IsEnabled(IDC_EMAIL_DELETE)) enabled += "delete ";
    if (page().IsEnabled(IDC_EMAIL_MODIFY)) enabled += "modify ";
    if (page().IsEnabled(IDC_EMAIL_DEFAULT)) enabled += "default";
    return enabled;
  }
};

TEST_F(UserTabLists, TheDefaultIsShownInCapitalsAndTheOthersAsStored) {
  OpenUser(
      {{"mail", "größe@x.test"}, {"otherMailbox", "Zoë@x.test"}, {"otherMailbox", "b@x.test"}});
  EXPECT_THAT(Addresses(), ElementsAre("b@x.test", "GRÖßE@X.TEST", "Zoë@x.test"));
  EXPECT_THAT(OkDifference(), IsEmpty());
}

TEST_F(UserTabLists, TheFirstAddressBecomesTheDefaultAndLaterOnesDoNot) {
  OpenUser({});
  EnterAddress(IDC_EMAIL_ADD, "First@x.test");
  EnterAddress(IDC_EMAIL_ADD, "Second@x.test");
  EXPECT_THAT(Addresses(), ElementsAre("FIRST@X.TEST", "Second@x.test"));
  EXPECT_THAT(Apply(), ElementsAre("+ mail: First@x.test", "+ otherMailbox: Second@x.test"));
}

TEST_F(UserTabLists, AnEmptyAddressIsWrongAndTheDialogStays) {
  OpenWith({});
  ShownBox box;
  modal_scripts().Add([this, &box](QWidget& window) {
    modal_scripts().Add(Confirm(box));
    contract::QtPlayer typist(window);
    typist.Click(static_cast<ControlId>(kDialogOk));
    EXPECT_TRUE(window.isVisible());
    typist.Click(static_cast<ControlId>(kDialogCancel));
  });
  user().Click(IDC_EMAIL_ADD);
  EXPECT_EQ(box.text, "Wrong emailaddress");
  EXPECT_THAT(Addresses(), ElementsAre("A@X.TEST"));
  EXPECT_FALSE(sheet().IsApplyEnabled());
}

TEST_F(UserTabLists, ModifyingShowsTheAddressAsStoredAndCancelKeepsIt) {
  OpenWith({"b@x.test"});
  ClickAddress("A@X.TEST");
  std::string shown;
  modal_scripts().Add([&shown](QWidget& window) {
    contract::QtPlayer typist(window);
    for (auto* edit : window.findChildren<QLineEdit*>()) shown = edit->text().toStdString();
    typist.Type(IDC_EMAIL_ADDRESS, "x");
    typist.Click(static_cast<ControlId>(kDialogCancel));
  });
  user().Click(IDC_EMAIL_MODIFY);
  EXPECT_EQ(shown, "a@x.test");
  EXPECT_THAT(Addresses(), ElementsAre("A@X.TEST", "b@x.test"));
  EXPECT_FALSE(sheet().IsApplyEnabled());
}

TEST_F(UserTabLists, AnotherLetterCaseIsAChange) {
  OpenWith({"b@x.test"});
  ClickAddress("b@x.test");
  EnterAddress(IDC_EMAIL_MODIFY, "B@x.test");
  EXPECT_THAT(Apply(), ElementsAre("- otherMailbox: b@x.test", "+ otherMailbox: B@x.test"));
}

TEST_F(UserTabLists, TheSameTextIsNoChange) {
  OpenWith({"b@x.test"});
  ClickAddress("b@x.test");
  EnterAddress(IDC_EMAIL_MODIFY, "b@x.test");
  EXPECT_FALSE(sheet().IsApplyEnabled());
  EXPECT_THAT(OkDifference(), IsEmpty());
}

TEST_F(UserTabLists, DeletingTheDefaultPassesItOnAndDropsTheDeletedOne) {
  OpenWith({"b@x.test"});
  ClickAddress("A@X.TEST");
  user().Click(IDC_EMAIL_DELETE);
  EXPECT_THAT(Addresses(), ElementsAre("B@X.TEST"));
  EXPECT_THAT(Apply(),
              ElementsAre("- mail: a@x.test", "- otherMailbox: b@x.test", "+ mail: b@x.test"));
}

TEST_F(UserTabLists, DeletingKeepsTheSelectionAtItsPlace) {
  OpenWith({"b@x.test", "c@x.test", "d@x.test"});
  ClickAddress("c@x.test");
  user().Click(IDC_EMAIL_DELETE);
  EXPECT_EQ(SelectedRow(IDC_EMAIL_LIST), "d@x.test") << "in the middle";
  user().Click(IDC_EMAIL_DELETE);
  EXPECT_EQ(SelectedRow(IDC_EMAIL_LIST), "b@x.test") << "the last row";
  EXPECT_THAT(Apply(), ElementsAre("- otherMailbox: c@x.test", "- otherMailbox: d@x.test"));
}

TEST_F(UserTabLists, TheLastAddressCannotBeDeletedOnlyReplaced) {
  OpenWith({"b@x.test"});
  user().ChooseComboRow(IDC_ACCOUNT_TYPE, kSharedStore);
  ClickAddress("A@X.TEST");
  user().Click(IDC_EMAIL_DELETE);
  EXPECT_TRUE(sheet().IsApplyEnabled());
  user().Click(IDC_EMAIL_DELETE);
  EXPECT_THAT(Addresses(), IsEmpty());
  EXPECT_EQ(Buttons(), "");
  EXPECT_FALSE(sheet().IsApplyEnabled()) << "mail would stay where the tab shows no address";
  EXPECT_EQ(
      sheet().Said(),
      "E-mail addresses: The last address cannot be removed, only replaced: add another one.");
  EnterAddress(IDC_EMAIL_ADD, "c@x.test");
  EXPECT_THAT(Apply(),
              ElementsAre("- mail: a@x.test", "- otherMailbox: b@x.test", "+ mail: c@x.test",
                          "+ peloraAdmin: 0", "+ peloraSharedStoreOnly: 1"));
}

TEST_F(UserTabLists, ADefaultChangesPlacesWithAnother) {
  OpenWith({"b@x.test"});
  ClickAddress("b@x.test");
  user().Click(IDC_EMAIL_DEFAULT);
  EXPECT_THAT(Addresses(), ElementsAre("a@x.test", "B@X.TEST"));
  EXPECT_THAT(Apply(), ElementsAre("- mail: a@x.test", "- otherMailbox: b@x.test",
                                   "+ mail: b@x.test", "+ otherMailbox: a@x.test"));
}

TEST_F(UserTabLists, TheDefaultAsDefaultAgainIsNoChange) {
  OpenWith({"b@x.test"});
  ClickAddress("A@X.TEST");
  user().Click(IDC_EMAIL_DEFAULT);
  EXPECT_FALSE(sheet().IsApplyEnabled());
  EXPECT_THAT(OkDifference(), IsEmpty());
}

TEST_F(UserTabLists, ButtonsFollowCountSelectionAndNeed) {
  OpenWith({"b@x.test"});
  EXPECT_EQ(Buttons(), "");
  ClickAddress("b@x.test");
  EXPECT_EQ(Buttons(), "delete modify default");
  user().Click(IDC_EMAIL_DELETE);
  EXPECT_EQ(Buttons(), "modify ") << "the only address of an active user";
  user().ChooseComboRow(IDC_ACCOUNT_TYPE, kSharedStore);
  EXPECT_EQ(Buttons(), "modify ") << "until the list is touched again";
  ClickAddress("A@X.TEST");
  EnterAddress(IDC_EMAIL_ADD, "c@x.test");
  ClickAddress("c@x.test");
  user().Click(IDC_EMAIL_DELETE);
  EXPECT_EQ(Buttons(), "delete modify ") << "the only address of a shared store";
}

TEST_F(UserTabLists, AnActiveUserWithoutAddressIsRefused) {
  OpenUser({});
  user().Click(IDC_PELORA_HIDDEN);
  ShownBox box;
  modal_scripts().Add(Confirm(box));
  EXPECT_THAT(Apply(), IsEmpty());
  EXPECT_EQ(box.caption, "Pelora Error");
  EXPECT_EQ(box.text,
            "Validation of input fields failed: Missing Email Address\n\n"
            "Error code: 0X80004005");
  EXPECT_TRUE(sheet().IsOpen());
  user().Click(IDC_PELORA_ACCOUNT);
  EXPECT_THAT(Apply(), ElementsAre("- peloraAccount: 1", "+ peloraAccount: 0", "+ peloraHidden: 1"))
      << "without an account nothing is asked for";
}

TEST_F(UserTabLists, ADelegateIsDeletedAndTheListWrittenWhole) {
  OpenWithDelegates({kAnna, kRolf});
  EXPECT_FALSE(page().IsEnabled(IDC_SENDAS_DELETE));
  ClickRow(IDC_SENDAS_LIST, kRolf);
  EXPECT_TRUE(page().IsEnabled(IDC_SENDAS_DELETE));
  user().Click(IDC_SENDAS_DELETE);
  EXPECT_THAT(Apply(), ElementsAre("- peloraSendAsPrivilege: " + std::string(kRolf)));
  EXPECT_EQ(SelectedRow(IDC_SENDAS_LIST), kAnna);
  user().Click(IDC_SENDAS_DELETE);
  EXPECT_FALSE(page().IsEnabled(IDC_SENDAS_DELETE));
  EXPECT_THAT(Apply(), ElementsAre("- peloraSendAsPrivilege: " + std::string(kAnna)));
}

}  // namespace
}  // namespace pelora::test
