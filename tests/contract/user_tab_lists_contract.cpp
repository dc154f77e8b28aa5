// SPDX-License-Identifier: Apache-2.0
// Addresses, delegates and home server of a user: what the lists show, which buttons can be
// pressed, and what is in the directory afterwards.
#include "tests/contract/user_tab_contract.h"

namespace pelora::contract {
namespace {

constexpr auto kOk = static_cast<ControlId>(kDialogOk);
constexpr auto kCancel = static_cast<ControlId>(kDialogCancel);
constexpr const char* kComponent = "CPropPageUser";

}  // namespace

void UserTabContract::OpenUsers(std::vector<TabValues> users) {
  constexpr const char* kSamples[] = {sample::kBirgit, sample::kRolf};
  std::vector<const char*> samples;
  for (TabValues& values : users) {
    for (const char* const shown :
         {"mail", "otherMailbox", "peloraSendAsPrivilege", "peloraHidden", "peloraQuotaOverride",
          "peloraQuotaWarn", "peloraQuotaSoft", "peloraQuotaHard", "peloraAdmin",
          "peloraSharedStoreOnly", "peloraResourceType", "peloraUserServer"}) {
      values.try_emplace(shown);
    }
    values.try_emplace("peloraAccount", Lines{"1"});
    values.try_emplace("peloraResourceCapacity", Lines{"0"});
    samples.push_back(kSamples[samples.size()]);
    Console().Give(Here(samples.back()), values);
  }
  Open(kComponent, samples);
}

void UserTabContract::OpenWith(const Lines& others) {
  OpenUser({{"mail", {"a@x.test"}}, {"otherMailbox", others}});
}

void UserTabContract::OpenWithDelegates(const std::vector<const char*>& samples) {
  OpenUser({{"mail", {"a@x.test"}}, {"peloraSendAsPrivilege", AllHere(samples)}});
}

void UserTabContract::EnterAddress(ControlId button, const std::string& address) {
  Console().TypeAddress(address);
  User().Click(button);
}

std::string UserTabContract::Buttons() {
  std::string enabled;
  if (Page().IsEnabled(IDC_EMAIL_DELETE)) enabled += "delete ";
  if (Page().IsEnabled(IDC_EMAIL_MODIFY)) enabled += "modify ";
  if (Page().IsEnabled(IDC_EMAIL_DEFAULT)) enabled += "default";
  return enabled;
}

// Addresses.

TEST_P(UserTabContract, TheDefaultIsShownInCapitalsAndTheOthersAsStored) {
  OpenUser({{"mail", {"größe@x.test"}}, {"otherMailbox", {"Zoë@x.test", "b@x.test"}}});
  EXPECT_EQ(Addresses(), (Lines{"b@x.test", "GRÖßE@X.TEST", "Zoë@x.test"}));
  EXPECT_EQ(Ok(), Lines{});
}

TEST_P(UserTabContract, OneOtherAddressIsAListOfOne) {
  OpenUser({{"otherMailbox", {"b@x.test"}}});
  EXPECT_EQ(Addresses(), Lines{"b@x.test"});
}

TEST_P(UserTabContract, TheFirstAddressBecomesTheDefaultAndLaterOnesDoNot) {
  OpenUser({});
  EnterAddress(IDC_EMAIL_ADD, "First@x.test");
  EXPECT_TRUE(Console().IsApplyEnabled());
  EXPECT_EQ(Apply(), Lines{"mail: First@x.test"});
  EnterAddress(IDC_EMAIL_ADD, "Second@x.test");
  EXPECT_EQ(Addresses(), (Lines{"FIRST@X.TEST", "Second@x.test"}));
  EXPECT_EQ(Apply(), Lines{"otherMailbox: Second@x.test"});
}

TEST_P(UserTabContract, TheSameAddressTwiceIsShownTwice) {
  OpenWith({});
  EnterAddress(IDC_EMAIL_ADD, "b@x.test");
  EnterAddress(IDC_EMAIL_ADD, "b@x.test");
  EXPECT_EQ(Addresses(), (Lines{"A@X.TEST", "b@x.test", "b@x.test"}));
}

TEST_P(UserTabContract, AnAddressOfBlanksIsAccepted) {
  // Held in its dialog otherwise.
  if (Console().LooksAfterFields()) return;
  OpenWith({});
  EnterAddress(IDC_EMAIL_ADD, "  ");
  EXPECT_EQ(Addresses(), (Lines{"  ", "A@X.TEST"}));
  EXPECT_EQ(Apply(), Lines{"otherMailbox:   "});
}

TEST_P(UserTabContract, AnEmptyAddressIsWrongAndTheDialogStays) {
  OpenWith({});
  Console().PlayNext([this](DialogPlayer& user) {
    Console().AwaitBox();
    user.Click(kOk);
    user.Type(IDC_EMAIL_ADDRESS, "b@x.test");
    user.PressEnter();
  });
  User().Click(IDC_EMAIL_ADD);
  EXPECT_EQ(Console().TakeBox(), (TabBox{.caption = "Error", .text = "Wrong emailaddress"}));
  EXPECT_EQ(Addresses(), (Lines{"A@X.TEST", "b@x.test"})) << "Enter is OK";
}

TEST_P(UserTabContract, ACancelledAddressChangesNothing) {
  OpenWith({"b@x.test"});
  ClickAddress("b@x.test");
  for (const bool by_window : {false, true}) {
    for (const ControlId button : {IDC_EMAIL_ADD, IDC_EMAIL_MODIFY}) {
      Console().PlayNext([by_window](DialogPlayer& user) {
        user.Type(IDC_EMAIL_ADDRESS, "c");
        by_window ? user.CloseWindow() : user.Click(kCancel);
      });
      User().Click(button);
    }
  }
  EXPECT_EQ(Addresses(), (Lines{"A@X.TEST", "b@x.test"}));
  EXPECT_FALSE(Console().IsApplyEnabled());
}

TEST_P(UserTabContract, ModifyingShowsTheAddressAsStored) {
  OpenWith({"b@x.test"});
  ClickAddress("A@X.TEST");
  std::string shown;
  Console().PlayNext([&shown](DialogPlayer& user) {
    shown = user.TextOf(IDC_EMAIL_ADDRESS);
    user.Click(kCancel);
  });
  User().Click(IDC_EMAIL_MODIFY);
  EXPECT_EQ(shown, "a@x.test");
}

TEST_P(UserTabContract, AnotherLetterCaseIsAChange) {
  OpenWith({"b@x.test"});
  ClickAddress("b@x.test");
  EnterAddress(IDC_EMAIL_MODIFY, "B@x.test");
  EXPECT_EQ(Addresses(), (Lines{"A@X.TEST", "B@x.test"}));
  EXPECT_EQ(Apply(), Lines{"otherMailbox: B@x.test"});
}

TEST_P(UserTabContract, TheSameTextIsNoChangeAlthoughThePageIsModified) {
  OpenWith({"b@x.test"});
  ClickAddress("b@x.test");
  EnterAddress(IDC_EMAIL_MODIFY, "b@x.test");
  EXPECT_EQ(Console().IsApplyEnabled(), !Console().LooksAfterFields());
  EXPECT_EQ(Ok(), Lines{});
}

TEST_P(UserTabContract, AModifiedDefaultIsWrittenToMail) {
  OpenWith({"b@x.test"});
  ClickAddress("A@X.TEST");
  EnterAddress(IDC_EMAIL_MODIFY, "z@x.test");
  EXPECT_EQ(Addresses(), (Lines{"b@x.test", "Z@X.TEST"}));
  EXPECT_EQ(Apply(), Lines{"mail: z@x.test"});
}

TEST_P(UserTabContract, DeletingTheDefaultPassesItToTheFirstAddressAsLoaded) {
  const bool keeps_order = Console().KeepsOrder();
  OpenWith(keeps_order ? Lines{"z@x.test", "b@x.test"} : Lines{"z@x.test"});
  ClickAddress("A@X.TEST");
  User().Click(IDC_EMAIL_DELETE);
  EXPECT_EQ(Addresses(), keeps_order ? (Lines{"b@x.test", "Z@X.TEST"}) : Lines{"Z@X.TEST"});
  EXPECT_EQ(Apply(), (Lines{"mail: z@x.test",
                            keeps_order ? "otherMailbox: b@x.test" : "otherMailbox: none"}));
}

TEST_P(UserTabContract, DeletingKeepsTheSelectionAtItsPlace) {
  OpenWith({"b@x.test", "c@x.test", "d@x.test"});
  ClickAddress("c@x.test");
  User().Click(IDC_EMAIL_DELETE);
  EXPECT_EQ(SelectedRow(IDC_EMAIL_LIST), "d@x.test") << "in the middle";
  User().Click(IDC_EMAIL_DELETE);
  EXPECT_EQ(SelectedRow(IDC_EMAIL_LIST), "b@x.test") << "the last row";
  EXPECT_EQ(Buttons(), "delete modify default");
  EXPECT_EQ(Apply(), Lines{"otherMailbox: b@x.test"});
}

TEST_P(UserTabContract, DeletingEveryAddressEmptiesTheOthersAndLeavesMail) {
  OpenWith({"b@x.test"});
  ChooseType(kSharedStore);
  ClickAddress("A@X.TEST");
  User().Click(IDC_EMAIL_DELETE);
  User().Click(IDC_EMAIL_DELETE);
  EXPECT_EQ(Addresses(), Lines{});
  EXPECT_EQ(Buttons(), "");
  EXPECT_EQ(Console().IsApplyEnabled(), !Console().LooksAfterFields());
  if (Console().LooksAfterFields()) return;
  EXPECT_EQ(Apply(), (Lines{"otherMailbox: none", "peloraAdmin: 0", "peloraSharedStoreOnly: 1"}));
}

TEST_P(UserTabContract, ADefaultChangesPlacesWithAnother) {
  OpenWith({"b@x.test"});
  ClickAddress("b@x.test");
  User().Click(IDC_EMAIL_DEFAULT);
  EXPECT_EQ(Addresses(), (Lines{"a@x.test", "B@X.TEST"}));
  EXPECT_EQ(Apply(), (Lines{"mail: b@x.test", "otherMailbox: a@x.test"}));
}

TEST_P(UserTabContract, TheDefaultAsDefaultAgainWritesNothingAlthoughThePageIsModified) {
  OpenWith({"b@x.test"});
  ClickAddress("A@X.TEST");
  User().Click(IDC_EMAIL_DEFAULT);
  EXPECT_EQ(Console().IsApplyEnabled(), !Console().LooksAfterFields());
  EXPECT_EQ(Ok(), Lines{});
}

TEST_P(UserTabContract, ADeletedDefaultLeavesTwoOfThemBehindWhenAThirdIsSet) {
  OpenWith({"b@x.test", "c@x.test"});
  ClickAddress("A@X.TEST");
  User().Click(IDC_EMAIL_DELETE);
  const bool is_first = Addresses().front() == "B@X.TEST";
  EXPECT_TRUE(is_first || !Console().KeepsOrder());
  ClickAddress(is_first ? "c@x.test" : "b@x.test");
  User().Click(IDC_EMAIL_DEFAULT);
  const std::string default_address = is_first ? "mail: c@x.test" : "mail: b@x.test";
  if (Console().LooksAfterFields()) {
    // What is shown is stored: the one that was chosen last is the only one.
    EXPECT_EQ(Addresses(),
              is_first ? (Lines{"b@x.test", "C@X.TEST"}) : (Lines{"B@X.TEST", "c@x.test"}));
    EXPECT_EQ(Apply(), (Lines{default_address,
                              is_first ? "otherMailbox: b@x.test" : "otherMailbox: c@x.test"}));
    return;
  }
  EXPECT_EQ(Addresses(), (Lines{"B@X.TEST", "C@X.TEST"}));
  EXPECT_EQ(Apply(), (Lines{default_address, "otherMailbox: none"}));
}

TEST_P(UserTabContract, ButtonsFollowCountSelectionAndNeed) {
  OpenWith({"b@x.test"});
  EXPECT_EQ(Buttons(), "");
  ClickAddress("b@x.test");
  EXPECT_EQ(Buttons(), "delete modify default");
  User().Click(IDC_EMAIL_DELETE);
  EXPECT_EQ(Buttons(), "modify ") << "the only address of an active user";
  ChooseType(kSharedStore);
  EXPECT_EQ(Buttons(), "modify ") << "until the list is touched again";
  ClickAddress("A@X.TEST");
  EnterAddress(IDC_EMAIL_ADD, "c@x.test");
  ClickAddress("c@x.test");
  User().Click(IDC_EMAIL_DELETE);
  EXPECT_EQ(Buttons(), "delete modify ") << "the only address of a shared store";
}

TEST_P(UserTabContract, TheOnlyAddressOfAnActiveUserCannotBeDeleted) {
  OpenWith({});
  ClickAddress("A@X.TEST");
  EXPECT_EQ(Buttons(), "modify ");
  User().Click(IDC_EMAIL_DELETE);
  EXPECT_EQ(Addresses(), Lines{"A@X.TEST"});
}

TEST_P(UserTabContract, DeletingTheLastRequiredAddressWarnsAndDeletesAllTheSame) {
  OpenWith({});
  ClickAddress("A@X.TEST");
  // Enabled otherwise than by the page.
  Page().SetEnabled(IDC_EMAIL_DELETE, true);
  Console().AwaitBox();
  User().Click(IDC_EMAIL_DELETE);
  EXPECT_EQ(Console().TakeBox(),
            (TabBox{.caption = "Pelora Error",
                    .text = "Pelora user requires at least one email address"}));
  EXPECT_EQ(Addresses(), Lines{});
}

TEST_P(UserTabContract, AnActiveUserWithoutAddressIsRefusedUnlessThereIsNoAccount) {
  OpenUser({});
  User().Click(IDC_PELORA_HIDDEN);
  Console().AwaitBox();
  EXPECT_EQ(Apply(), Lines{});
  EXPECT_EQ(Console().TakeBox(),
            ErrorBox("Validation of input fields failed: Missing Email Address"));
  EXPECT_TRUE(Console().IsOpen());
  EXPECT_TRUE(Console().IsApplyEnabled());
  User().Click(IDC_PELORA_ACCOUNT);
  EXPECT_EQ(Apply(), (Lines{"peloraAccount: 0", "peloraHidden: 1"}));
  EXPECT_FALSE(Console().IsApplyEnabled());
}

// Delegates.

TEST_P(UserTabContract, ChosenDelegatesAreAppended) {
  OpenWithDelegates({sample::kAnna});
  Pick(IDC_SENDAS_ADD, {sample::kTom, sample::kHelga});
  EXPECT_EQ(Rows(IDC_SENDAS_LIST), AllHere({sample::kHelga, sample::kAnna, sample::kTom}));
  EXPECT_TRUE(Console().IsApplyEnabled());
  TabValues expected = {
      {"peloraSendAsPrivilege", AllHere({sample::kAnna, sample::kTom, sample::kHelga})}};
  EXPECT_EQ(Apply(), ToLines(Console(), expected));
}

TEST_P(UserTabContract, ADelegateMayBeListedTwice) {
  OpenWithDelegates({sample::kAnna});
  Pick(IDC_SENDAS_ADD, {sample::kAnna});
  EXPECT_EQ(Rows(IDC_SENDAS_LIST), AllHere({sample::kAnna, sample::kAnna}));
}

TEST_P(UserTabContract, NoDelegateChosenIsNoEdit) {
  OpenWithDelegates({sample::kAnna});
  User().Click(IDC_SENDAS_ADD);
  EXPECT_EQ(Rows(IDC_SENDAS_LIST), AllHere({sample::kAnna}));
  EXPECT_FALSE(Console().IsApplyEnabled());
}

TEST_P(UserTabContract, ADelegateIsDeletedAndTheListWrittenWhole) {
  OpenWithDelegates({sample::kAnna, sample::kTom});
  EXPECT_FALSE(Page().IsEnabled(IDC_SENDAS_DELETE));
  ClickRow(IDC_SENDAS_LIST, Here(sample::kTom));
  EXPECT_TRUE(Page().IsEnabled(IDC_SENDAS_DELETE));
  User().Click(IDC_SENDAS_DELETE);
  EXPECT_EQ(Apply(), Lines{"peloraSendAsPrivilege: " + Here(sample::kAnna)});
  EXPECT_EQ(SelectedRow(IDC_SENDAS_LIST), Here(sample::kAnna));
  User().Click(IDC_SENDAS_DELETE);
  EXPECT_FALSE(Page().IsEnabled(IDC_SENDAS_DELETE));
  EXPECT_EQ(Rows(IDC_SENDAS_LIST), Lines{});
  EXPECT_EQ(Apply(), Lines{"peloraSendAsPrivilege: none"});
}

// The home server.

TEST_P(UserTabContract, AChosenServerIsShownByNameAndWritten) {
  OpenUser({{"mail", {"a@x.test"}}, {"peloraUserServer", {"node-1"}}});
  Pick(IDC_SERVER_SELECT, {sample::kSecondServer});
  EXPECT_EQ(Page().Text(IDC_SERVER), "mail02");
  EXPECT_TRUE(Console().IsApplyEnabled());
  EXPECT_EQ(Apply(), Lines{"peloraUserServer: mail02"});
  // Once.
  Console().Give(Here(sample::kBirgit), {{"peloraUserServer", {"node-3"}}});
  EXPECT_EQ(Changes(), Lines{"peloraUserServer: node-3"});
  User().Click(IDC_PELORA_HIDDEN);
  EXPECT_EQ(Apply(), Lines{"peloraHidden: 1"});
}

TEST_P(UserTabContract, NoServerChosenIsNoEdit) {
  OpenUser({{"mail", {"a@x.test"}}, {"peloraUserServer", {"node-1"}}});
  User().Click(IDC_SERVER_SELECT);
  EXPECT_EQ(Page().Text(IDC_SERVER), "node-1");
  EXPECT_FALSE(Console().IsApplyEnabled());
}

TEST_P(UserTabContract, TheServerCannotBeTyped) {
  OpenUser({{"mail", {"a@x.test"}}, {"peloraUserServer", {"node-1"}}});
  User().Type(IDC_SERVER, "x");
  User().Erase(IDC_SERVER);
  EXPECT_EQ(Page().Text(IDC_SERVER), "node-1");
  EXPECT_FALSE(Console().IsApplyEnabled());
}

TEST_P(UserTabContract, AServerChosenForSeveralUsersIsWrittenToEach) {
  OpenUsers({{{"peloraUserServer", {"node-1"}}}, {}});
  EXPECT_EQ(Page().Text(IDC_SERVER), "");
  Pick(IDC_SERVER_SELECT, {sample::kSecondServer});
  EXPECT_EQ(Apply(), Lines{"peloraUserServer: mail02"});
  EXPECT_EQ(Changes(1), Lines{"peloraUserServer: mail02"});
}

}  // namespace pelora::contract
