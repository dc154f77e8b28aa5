// SPDX-License-Identifier: Apache-2.0
#include "tests/contract/guarded_sheet_contract.h"

#include <gmock/gmock.h>

#include <array>

#include "tests/contract/guarded_sheet.h"
#include "tests/support/fault_store.h"

namespace pelora::contract {
namespace {

using pelora::testing::FaultStore;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

/// The row of the account types that makes a room of a user.
constexpr RowIndex kRoom = 2;

const ldap::StoreStatus kNoRight{50, "no right to do that"};
const ldap::StoreStatus kNoAnswer{-5, "no answer came"};

}  // namespace

GuardedSheetContract::GuardedSheetContract() {
  for (std::size_t user = 0; user < users_.size(); ++user) {
    for (const char* const name :
         {"peloraHidden", "peloraQuotaWarn", "peloraQuotaSoft", "peloraAdmin",
          "peloraSharedStoreOnly", "peloraResourceType", "peloraResourceCapacity",
          "peloraUserServer", "peloraSendAsPrivilege"}) {
      Set(name, {}, user);
    }
    Set("mail", {"a@pelora.test"}, user);
    Set("otherMailbox", {"b@pelora.test", "c@pelora.test"}, user);
    Set("peloraAccount", {"1"}, user);
    Set("peloraQuotaOverride", {"1"}, user);
    Set("peloraQuotaHard", {"500"}, user);
  }
}

GuardedSheetContract::Lines GuardedSheetContract::Stored(const std::string& attribute,
                                                         std::size_t user) {
  const std::array<std::string, 1> wanted = {attribute};
  ldap::Entry entry;
  EXPECT_TRUE(Second().Read(User(user), wanted, entry).Ok());
  Lines values = entry.attributes[attribute];
  std::ranges::sort(values);
  return values;
}

void GuardedSheetContract::Set(const std::string& attribute, const Lines& values,
                               std::size_t user) {
  const ldap::Modification change{.attribute = attribute, .values = values};
  const ldap::StoreStatus done = Second().Modify(User(user), {&change, 1});
  EXPECT_TRUE(done.Ok()) << attribute << ": " << done.text;
}

TEST_P(GuardedSheetContract, AddressesThatTwoAddBothStay) {
  GuardedSheet first(First(), {User()});
  GuardedSheet second(Second(), {User()});
  first.AddAddress("first@pelora.test");
  second.AddAddress("second@pelora.test");
  EXPECT_TRUE(second.sheet().Ok());
  EXPECT_TRUE(first.sheet().Ok());
  EXPECT_THAT(Stored("otherMailbox"), ElementsAre("b@pelora.test", "c@pelora.test",
                                                  "first@pelora.test", "second@pelora.test"));
  EXPECT_THAT(first.TakeBoxes(), IsEmpty());
  EXPECT_THAT(second.TakeBoxes(), IsEmpty());
}

TEST_P(GuardedSheetContract, AnAddressThatOneTakesOutStaysOutThoughAnotherAddsOne) {
  GuardedSheet first(First(), {User()});
  GuardedSheet second(Second(), {User()});
  second.DeleteAddress("b@pelora.test");
  EXPECT_TRUE(second.sheet().Ok());
  first.AddAddress("first@pelora.test");
  EXPECT_TRUE(first.sheet().Apply());
  EXPECT_THAT(Stored("otherMailbox"), ElementsAre("c@pelora.test", "first@pelora.test"));
  // And once more from what the sheet has written.
  first.DeleteAddress("first@pelora.test");
  EXPECT_TRUE(first.sheet().Ok());
  EXPECT_THAT(Stored("otherMailbox"), ElementsAre("c@pelora.test"));
}

TEST_P(GuardedSheetContract, AThirdAddressIsTheOnlyDefaultThoughTheOldOneWasDeletedFirst) {
  GuardedSheet sheet(First(), {User()});
  sheet.DeleteAddress("A@PELORA.TEST");
  // Whose turn it is then follows from the order in which the directory gives them.
  const bool is_bs_turn = sheet.Rows(IDC_EMAIL_LIST).front() == "B@PELORA.TEST";
  const std::string third = is_bs_turn ? "c@pelora.test" : "b@pelora.test";
  sheet.MakeDefault(third);
  EXPECT_EQ(sheet.Rows(IDC_EMAIL_LIST), is_bs_turn ? (Lines{"b@pelora.test", "C@PELORA.TEST"})
                                                   : (Lines{"B@PELORA.TEST", "c@pelora.test"}));
  EXPECT_TRUE(sheet.sheet().Ok());
  EXPECT_THAT(Stored("mail"), ElementsAre(third));
  EXPECT_THAT(Stored("otherMailbox"), ElementsAre(is_bs_turn ? "b@pelora.test" : "c@pelora.test"));
}

TEST_P(GuardedSheetContract, ABoxThatWasTickedOnceIsNotTickedAgainOverAnothersWish) {
  GuardedSheet first(First(), {User()});
  first.Click(IDC_PELORA_HIDDEN);
  EXPECT_TRUE(first.sheet().Apply());
  EXPECT_THAT(Stored("peloraHidden"), ElementsAre("1"));
  Set("peloraHidden", {"0"});
  // The page writes a box that was ever clicked with every apply.
  first.Type(IDC_QUOTA_HARD, "600");
  EXPECT_TRUE(first.sheet().Ok());
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("600"));
  EXPECT_THAT(Stored("peloraHidden"), ElementsAre("0"));
}

TEST_P(GuardedSheetContract, ARoomThatSomebodyMadeMeanwhileStaysARoom) {
  GuardedSheet first(First(), {User()});
  GuardedSheet second(Second(), {User()});
  second.ChooseRow(IDC_ACCOUNT_TYPE, kRoom);
  second.Type(IDC_CAPACITY, "12");
  EXPECT_TRUE(second.sheet().Ok());
  first.Type(IDC_QUOTA_HARD, "600");
  EXPECT_TRUE(first.sheet().Ok());
  EXPECT_THAT(first.TakeBoxes(), IsEmpty());
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("600"));
  EXPECT_THAT(Stored("peloraResourceType"), ElementsAre("room"));
  EXPECT_THAT(Stored("peloraResourceCapacity"), ElementsAre("12"));
}

TEST_P(GuardedSheetContract, AFieldThatWasTypedIntoAndEmptiedAgainStaysAsItIsForUsersWhoDiffer) {
  Set("peloraQuotaHard", {"700"}, 1);
  GuardedSheet sheet(First(), Users());
  EXPECT_EQ(sheet.page().Text(IDC_QUOTA_HARD), "");
  sheet.Type(IDC_QUOTA_HARD, "1");
  sheet.Type(IDC_QUOTA_HARD, "");
  EXPECT_TRUE(sheet.sheet().Ok());
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("500"));
  EXPECT_THAT(Stored("peloraQuotaHard", 1), ElementsAre("700"));
}

TEST_P(GuardedSheetContract, AValueIsTakenFromUsersWhoDifferByACommandOfItsOwn) {
  Set("peloraQuotaHard", {"700"}, 1);
  GuardedSheet sheet(First(), Users());
  sheet.RemoveValue("peloraQuotaHard");
  EXPECT_TRUE(sheet.sheet().Ok());
  for (std::size_t user = 0; user < Users().size(); ++user) {
    EXPECT_THAT(Stored("peloraQuotaHard", user), IsEmpty());
  }
}

TEST_P(GuardedSheetContract, AFieldThatIsSetBackIsNotSent) {
  FaultStore store(First());
  GuardedSheet sheet(store, {User()});
  sheet.Click(IDC_PELORA_HIDDEN);
  sheet.Click(IDC_PELORA_HIDDEN);
  sheet.Type(IDC_QUOTA_HARD, "600");
  sheet.Type(IDC_QUOTA_HARD, "500");
  EXPECT_TRUE(sheet.sheet().Ok());
  EXPECT_THAT(store.changed, IsEmpty());
}

TEST_P(GuardedSheetContract, AListThatIsSetBackShowsWhatWasReadAndIsNotSent) {
  FaultStore store(First());
  GuardedSheet sheet(store, {User()});
  const Lines read = sheet.Rows(IDC_EMAIL_LIST);
  sheet.DeleteAddress("b@pelora.test");
  sheet.AddAddress("d@pelora.test");
  EXPECT_TRUE(sheet.HasChangedFields());
  sheet.SetBack("otherMailbox");
  EXPECT_EQ(sheet.Rows(IDC_EMAIL_LIST), read);
  EXPECT_FALSE(sheet.HasChangedFields()) << "the default address among it";
  EXPECT_TRUE(sheet.sheet().Ok());
  EXPECT_THAT(store.changed, IsEmpty());
}

TEST_P(GuardedSheetContract, AListIsEditedAfterItWasSetBackAsEverElse) {
  GuardedSheet sheet(First(), {User()});
  sheet.DeleteAddress("A@PELORA.TEST");
  sheet.SetBack("mail");
  sheet.AddAddress("d@pelora.test");
  EXPECT_TRUE(sheet.sheet().Ok());
  EXPECT_THAT(Stored("mail"), ElementsAre("a@pelora.test"));
  EXPECT_THAT(Stored("otherMailbox"),
              ElementsAre("b@pelora.test", "c@pelora.test", "d@pelora.test"));
}

TEST_P(GuardedSheetContract, AListGoesBackToWhatWasWrittenLast) {
  GuardedSheet sheet(First(), {User()});
  sheet.AddAddress("d@pelora.test");
  EXPECT_TRUE(sheet.sheet().Apply());
  sheet.DeleteAddress("d@pelora.test");
  sheet.SetBack("otherMailbox");
  sheet.Click(IDC_PELORA_HIDDEN);
  EXPECT_TRUE(sheet.sheet().Ok());
  EXPECT_THAT(Stored("otherMailbox"),
              ElementsAre("b@pelora.test", "c@pelora.test", "d@pelora.test"));
  EXPECT_THAT(Stored("peloraHidden"), ElementsAre("1"));
}

TEST_P(GuardedSheetContract, WhatCouldNotBeWrittenOfAListIsNotSentOnceItIsSetBack) {
  FaultStore store(First());
  GuardedSheet sheet(store, {User()});
  sheet.AddAddress("d@pelora.test");
  store.FailChange(1, kNoRight);
  EXPECT_FALSE(sheet.sheet().Apply());
  EXPECT_THAT(sheet.TakeBoxes(), SizeIs(1));
  sheet.SetBack("otherMailbox");
  EXPECT_TRUE(sheet.sheet().Ok());
  EXPECT_THAT(Stored("otherMailbox"), ElementsAre("b@pelora.test", "c@pelora.test"));
  EXPECT_THAT(store.changed, SizeIs(1)) << "the one that was refused";
}

TEST_P(GuardedSheetContract, OkWithoutAnEditSendsNothing) {
  FaultStore store(First());
  GuardedSheet sheet(store, Users());
  EXPECT_TRUE(sheet.sheet().Ok());
  EXPECT_THAT(store.changed, IsEmpty());
  EXPECT_THAT(store.read_whole, IsEmpty()) << "there are photos, and secrets";
}

TEST_P(GuardedSheetContract, AValueThatSomebodyElseChangedIsToldAndNothingOfTheObjectWritten) {
  GuardedSheet sheet(First(), {User()});
  sheet.Click(IDC_PELORA_HIDDEN);
  sheet.Type(IDC_QUOTA_HARD, "600");
  Set("peloraQuotaHard", {"700"});
  EXPECT_FALSE(sheet.sheet().Ok());
  EXPECT_TRUE(sheet.sheet().IsOpen());
  EXPECT_TRUE(sheet.sheet().IsApplyEnabled());
  const Lines boxes = sheet.TakeBoxes();
  ASSERT_THAT(boxes, SizeIs(1));
  EXPECT_THAT(boxes.front(), HasSubstr("Object: " + User()));
  EXPECT_THAT(boxes.front(),
              HasSubstr("Hard limit was 500 when it was read, is 700 now, and was to become 600."));
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("700"));
  EXPECT_THAT(Stored("peloraHidden"), IsEmpty());
  // Who has seen it and applies once more means it.
  EXPECT_TRUE(sheet.sheet().Ok());
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("600"));
  EXPECT_THAT(Stored("peloraHidden"), ElementsAre("1"));
}

TEST_P(GuardedSheetContract, WhoCancelsAfterAConflictLeavesTheOthersValue) {
  GuardedSheet sheet(First(), {User()});
  sheet.Type(IDC_QUOTA_HARD, "600");
  Set("peloraQuotaHard", {"700"});
  EXPECT_FALSE(sheet.sheet().Apply());
  EXPECT_TRUE(sheet.sheet().Cancel());
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("700"));
}

TEST_P(GuardedSheetContract, TwoWhoTypeTheSameAreOfOneMind) {
  GuardedSheet sheet(First(), {User()});
  sheet.Type(IDC_QUOTA_HARD, "600");
  Set("peloraQuotaHard", {"600"});
  EXPECT_TRUE(sheet.sheet().Ok());
  EXPECT_THAT(sheet.TakeBoxes(), IsEmpty());
}

TEST_P(GuardedSheetContract, WhatCouldNotBeWrittenIsWrittenWhenTheCauseIsGone) {
  Set("peloraQuotaOverride", {"0"});
  FaultStore store(First());
  GuardedSheet sheet(store, {User()});
  sheet.Click(IDC_QUOTA_OVERRIDE);
  sheet.Type(IDC_QUOTA_HARD, "600");
  store.FailChange(1, kNoRight);
  EXPECT_FALSE(sheet.sheet().Ok());
  EXPECT_TRUE(sheet.sheet().IsOpen());
  EXPECT_TRUE(sheet.sheet().IsApplyEnabled());
  EXPECT_TRUE(sheet.sheet().machine().HasUnsavedEdits());
  EXPECT_THAT(
      sheet.TakeBoxes(),
      ElementsAre("Unknown error occured||Error code: 0X80070005||Object: " + User() +
                  "|Fields: Hard limit, Use user quota|The directory says: no right to do that||"
                  "You may not change this. What you typed is kept here: get the right to change "
                  "it and apply again."));
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("500"));
  EXPECT_TRUE(sheet.sheet().Ok());
  EXPECT_THAT(Stored("peloraQuotaOverride"), ElementsAre("1"));
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("600"));
  EXPECT_THAT(sheet.TakeBoxes(), IsEmpty());
}

TEST_P(GuardedSheetContract, WhatIsEditedAgainReplacesWhatCouldNotBeWritten) {
  FaultStore store(First());
  GuardedSheet sheet(store, {User()});
  sheet.Type(IDC_QUOTA_HARD, "600");
  store.FailChange(1, kNoRight);
  EXPECT_FALSE(sheet.sheet().Apply());
  sheet.Type(IDC_QUOTA_HARD, "650");
  EXPECT_TRUE(sheet.sheet().Ok());
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("650"));
}

TEST_P(GuardedSheetContract, WhatIsTakenBackAfterAFailureIsNotWritten) {
  FaultStore store(First());
  GuardedSheet sheet(store, {User()});
  sheet.Type(IDC_QUOTA_HARD, "600");
  store.FailChange(1, kNoRight);
  EXPECT_FALSE(sheet.sheet().Apply());
  sheet.Type(IDC_QUOTA_HARD, "500");
  store.changed.clear();
  EXPECT_TRUE(sheet.sheet().Ok());
  EXPECT_THAT(store.changed, IsEmpty());
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("500"));
}

TEST_P(GuardedSheetContract, TheFirstFailureEndsItAndTheRestIsWrittenNextTime) {
  FaultStore store(First());
  GuardedSheet sheet(store, Users());
  sheet.Type(IDC_QUOTA_HARD, "600");
  store.FailChange(2, kNoRight);
  EXPECT_FALSE(sheet.sheet().Ok());
  EXPECT_THAT(store.changed, ElementsAre(User(0), User(1)));
  EXPECT_THAT(sheet.TakeBoxes(), ElementsAre(HasSubstr("Object: " + User(1))));
  EXPECT_THAT(Stored("peloraQuotaHard", 0), ElementsAre("600"));
  EXPECT_THAT(Stored("peloraQuotaHard", 1), ElementsAre("500"));
  EXPECT_THAT(Stored("peloraQuotaHard", 2), ElementsAre("500"));
  store.changed.clear();
  EXPECT_TRUE(sheet.sheet().Ok());
  EXPECT_THAT(store.changed, ElementsAre(User(1), User(2)));
  for (std::size_t user = 0; user < Users().size(); ++user) {
    EXPECT_THAT(Stored("peloraQuotaHard", user), ElementsAre("600"));
  }
}

TEST_P(GuardedSheetContract, AWriteWithoutAnAnswerMayHaveBeenDone) {
  FaultStore store(First());
  GuardedSheet sheet(store, {User()});
  sheet.Type(IDC_QUOTA_HARD, "600");
  store.FailChange(1, kNoAnswer, true);
  EXPECT_FALSE(sheet.sheet().Ok());
  EXPECT_THAT(sheet.TakeBoxes(), ElementsAre(HasSubstr("It may have been done or not")));
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("600"));
  EXPECT_TRUE(sheet.sheet().Ok());
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("600"));
  EXPECT_THAT(sheet.TakeBoxes(), IsEmpty());
}

TEST_P(GuardedSheetContract, ATabThatIsNotShowingIsShownWhenItCannotBeWritten) {
  FaultStore store(First());
  GuardedSheet sheet(store, {User()});
  sheet.Type(IDC_QUOTA_HARD, "600");
  ASSERT_TRUE(sheet.sheet().SelectPage(1));
  store.FailChange(1, kNoRight);
  EXPECT_FALSE(sheet.sheet().Ok());
  EXPECT_EQ(sheet.sheet().CurrentPage(), 0U);
  EXPECT_EQ(sheet.page().Text(IDC_QUOTA_HARD), "600");
  EXPECT_TRUE(sheet.sheet().Ok());
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("600"));
}

TEST_P(GuardedSheetContract, AnObjectThatIsGoneIsToldAndCanBeCancelled) {
  FaultStore store(First());
  GuardedSheet sheet(store, {User()});
  sheet.Type(IDC_QUOTA_HARD, "600");
  store.FailChange(1, {32, "no such object"});
  EXPECT_FALSE(sheet.sheet().Ok());
  EXPECT_THAT(sheet.TakeBoxes(), ElementsAre(HasSubstr("deleted or moved")));
  EXPECT_TRUE(sheet.sheet().Cancel());
}

TEST_P(GuardedSheetContract, AFailedReadingIsToldWithTheDirectorysWordsAndCanBeTriedAgain) {
  FaultStore store(First());
  GuardedSheet sheet(store, {User()});
  // It was read when the sheet was opened; after a change it is read anew.
  sheet.Type(IDC_QUOTA_HARD, "550");
  EXPECT_TRUE(sheet.sheet().Apply());
  sheet.Type(IDC_QUOTA_HARD, "600");
  store.FailReading({51, "asleep"});
  EXPECT_FALSE(sheet.sheet().Ok());
  const Lines boxes = sheet.TakeBoxes();
  ASSERT_THAT(boxes, SizeIs(1));
  EXPECT_THAT(boxes.front(), StartsWith("Unable to get connection with the ldap user||Error code: "
                                        "0X8007200E||Object: LDAP://"));
  EXPECT_THAT(boxes.front(), HasSubstr("|The directory says: asleep||Try again"));
  store.FailReading({});
  EXPECT_TRUE(sheet.sheet().Ok());
  EXPECT_THAT(sheet.TakeBoxes(), IsEmpty());
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("600"));
}

}  // namespace pelora::contract
