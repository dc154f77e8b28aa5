// SPDX-License-Identifier: Apache-2.0
// Search base and query, on the tabs of address lists and of dynamic distribution lists.
#include "resources/resource.h"
#include "tests/unit/tab_bench.h"

namespace pelora {
namespace {

using enum ControlNotification;
using testing::FakeAttributes;
using testing::Lines;

const FakeAttributes kList = {{"peloraAccount", Variant::Integer(1)},
                              {"peloraBase", Variant::String("OU=Staff,DC=x")},
                              {"peloraFilter", Variant::String("(mail=*)")}};

class SearchTabTest : public testing::TabTest, public ::testing::WithParamInterface<const char*> {
 protected:
  void OpenOn(const FakeAttributes& attributes) { Open(GetParam(), {attributes}); }
};

INSTANTIATE_TEST_SUITE_P(Both, SearchTabTest,
                         ::testing::Values("CPropPageAddresslist", "CPropPageDynamicDistlist"),
                         [](const auto& row) { return std::string(row.param); });

TEST_P(SearchTabTest, ShowsBaseAndQuery) {
  OpenOn(kList);
  EXPECT_EQ(Text(IDC_SEARCH_BASE), "OU=Staff,DC=x");
  EXPECT_EQ(Text(IDC_SEARCH_QUERY), "(mail=*)");
  EXPECT_FALSE(page().IsModified());
}

TEST_P(SearchTabTest, TheBaseCannotBeTyped) {
  OpenOn(kList);
  EXPECT_EQ(page().user().TypeText(IDC_SEARCH_BASE, "x"), UserAnswer::kDisabled);
}

TEST_P(SearchTabTest, AnEmptyQueryIsRefusedWithAnAccount) {
  OpenOn({{"peloraAccount", Variant::Integer(1)}});
  EXPECT_EQ(Refusal(), "Validation of input fields failed: Missing Search Query");
  page().Type(IDC_SEARCH_QUERY, "(cn=*)");
  EXPECT_EQ(Applied(), Lines{"peloraFilter \"(cn=*)\""});
}

TEST_P(SearchTabTest, AnEmptyQueryIsRefusedAlsoWithoutRoomForAMessage) {
  OpenOn({{"peloraAccount", Variant::Integer(1)}});
  EXPECT_EQ(page().page().ValidateAll(nullptr), E_FAIL);
}

TEST_P(SearchTabTest, AnEmptyQueryIsSavedWithoutAnAccount) {
  OpenOn({{"peloraFilter", Variant::String("(mail=*)")}});
  EXPECT_EQ(page().user().EraseText(IDC_SEARCH_QUERY), UserAnswer::kDone);
  EXPECT_EQ(Applied(), Lines{"peloraFilter cleared"});
}

TEST_P(SearchTabTest, AnEmptyQueryIsSavedWhileTheAccountsDiffer) {
  Open(GetParam(), {{{"peloraAccount", Variant::Integer(1)}}, {}});
  EXPECT_EQ(dialog().Check(IDC_PELORA_ACCOUNT), CheckState::kIndeterminate);
  EXPECT_EQ(Applied(), Lines{});
}

TEST_P(SearchTabTest, AnEmptyQueryIsRefusedForSeveralWithAnAccount) {
  const FakeAttributes with_account = {{"peloraAccount", Variant::Integer(1)}};
  Open(GetParam(), {with_account, with_account, with_account});
  EXPECT_EQ(Refusal(), "Validation of input fields failed: Missing Search Query");
}

TEST_P(SearchTabTest, UncheckingTheAccountLiftsTheValidation) {
  OpenOn({{"peloraAccount", Variant::Integer(1)}});
  page().Click(IDC_PELORA_ACCOUNT);
  EXPECT_EQ(Applied(), Lines{"peloraAccount 0"});
}

TEST_P(SearchTabTest, BlanksAreAQuery) {
  OpenOn({{"peloraAccount", Variant::Integer(1)}});
  page().Type(IDC_SEARCH_QUERY, "  ");
  EXPECT_EQ(Applied(), Lines{R"(peloraFilter "  ")"});
}

TEST_P(SearchTabTest, NeitherTheQuerysFormNorTheBaseIsChecked) {
  OpenOn({{"peloraAccount", Variant::Integer(1)}});
  page().Type(IDC_SEARCH_QUERY, "((no filter");
  EXPECT_EQ(Applied(), Lines{"peloraFilter \"((no filter\""});
}

TEST_P(SearchTabTest, ABaseIsChosenFromTheTree) {
  OpenOn(kList);
  bench_.choosers.Browse(kDialogOk, "LDAP://dc1/OU=Sales,DC=x");
  EXPECT_EQ(Command(IDC_SEARCH_BASE_SELECT, kClicked), 0);
  EXPECT_EQ(Text(IDC_SEARCH_BASE), "OU=Sales,DC=x");
  EXPECT_TRUE(page().IsModified());
  EXPECT_EQ(Applied(), Lines{R"(peloraBase "OU=Sales,DC=x")"});
  EXPECT_EQ(Applied(), Lines{}) << "only once";
}

TEST_P(SearchTabTest, TheSameBaseChosenAgainIsWritten) {
  OpenOn(kList);
  bench_.choosers.Browse(kDialogOk, "LDAP://OU=Staff,DC=x");
  page().Click(IDC_SEARCH_BASE_SELECT);
  EXPECT_EQ(Applied(), Lines{R"(peloraBase "OU=Staff,DC=x")"});
}

TEST_P(SearchTabTest, ACancelledOrFailedChoiceChangesNothingAndAnswersOne) {
  OpenOn(kList);
  for (const std::int32_t answer : {kDialogCancel, -1, 0}) {
    bench_.choosers.Browse(answer, "LDAP://OU=Sales,DC=x");
    EXPECT_EQ(Command(IDC_SEARCH_BASE_SELECT, kClicked), 1);
  }
  EXPECT_EQ(bench_.choosers.browsers().size(), 3U);
  EXPECT_EQ(Text(IDC_SEARCH_BASE), "OU=Staff,DC=x");
  EXPECT_FALSE(page().IsModified());
  EXPECT_EQ(Applied(), Lines{});
}

TEST_P(SearchTabTest, BaseAndQueryOfSeveralThatDifferAreEmptyAndWrittenToEachWhenGiven) {
  Open(GetParam(), {kList, {{"peloraBase", Variant::String("OU=Staff,DC=x")}}, {}});
  EXPECT_EQ(Text(IDC_SEARCH_BASE), "");
  EXPECT_EQ(Text(IDC_SEARCH_QUERY), "");
  bench_.choosers.Browse(kDialogOk, "LDAP://OU=All,DC=x");
  page().Click(IDC_SEARCH_BASE_SELECT);
  page().Type(IDC_SEARCH_QUERY, "(sn=*)");
  const Lines written = {R"(peloraBase "OU=All,DC=x")", "peloraFilter \"(sn=*)\""};
  EXPECT_EQ(Applied(), written);
  EXPECT_EQ(Staged(1), written);
  EXPECT_EQ(Staged(2), written);
}

TEST_P(SearchTabTest, ABaseThatAllHaveIsShown) {
  Open(GetParam(), {kList, kList, kList});
  EXPECT_EQ(Text(IDC_SEARCH_BASE), "OU=Staff,DC=x");
  EXPECT_EQ(Text(IDC_SEARCH_QUERY), "(mail=*)");
}

class AddresslistTest : public testing::TabTest {};

TEST_F(AddresslistTest, WritesAccountThenSearch) {
  Open("CPropPageAddresslist", {kList});
  bench_.choosers.Browse(kDialogOk, "LDAP://OU=Sales,DC=x");
  page().Click(IDC_SEARCH_BASE_SELECT);
  page().Type(IDC_SEARCH_QUERY, "(cn=*)");
  page().Click(IDC_PELORA_HIDDEN);
  page().Click(IDC_PELORA_ACCOUNT);
  EXPECT_EQ(Applied(), (Lines{"peloraAccount 0", "peloraHidden 1", R"(peloraBase "OU=Sales,DC=x")",
                              "peloraFilter \"(cn=*)\""}));
}

class DynamicDistlistTest : public testing::TabTest {
 protected:
  [[nodiscard]] static FakeAttributes Addressed() {
    FakeAttributes list = kList;
    list["mail"] = Variant::String("one@x");
    list["otherMailbox"] = Variant::StringArray({"one@y", "one@z"});
    list["peloraSendAsPrivilege"] = Variant::StringArray({"CN=Bob,DC=x", "CN=Eve,DC=x"});
    return list;
  }
};

TEST_F(DynamicDistlistTest, WritesSearchThenAddressesThenAccount) {
  Open("CPropPageDynamicDistlist", {Addressed()});
  page().Click(IDC_PELORA_ACCOUNT);
  page().Click(IDC_PELORA_HIDDEN);
  page().SelectRow(IDC_EMAIL_LIST, "one@z");
  page().Click(IDC_EMAIL_DEFAULT);
  page().SelectRow(IDC_EMAIL_LIST, "one@y");
  page().Click(IDC_EMAIL_DELETE);
  page().Type(IDC_SEARCH_QUERY, "(cn=*)");
  EXPECT_EQ(Applied(), (Lines{"peloraFilter \"(cn=*)\"", R"(mail "one@z")",
                              R"(otherMailbox ["one@x"])", "peloraAccount 0", "peloraHidden 1"}));
}

TEST_F(DynamicDistlistTest, LeavesTheDelegatesAlone) {
  Open("CPropPageDynamicDistlist", {Addressed()});
  Choose({"CN=Carl,DC=x"});
  for (const ControlId missing : {237U, 238U, 239U}) {
    (void)Command(missing, kClicked);
    (void)Command(missing, kSelectionChange);
  }
  EXPECT_TRUE(bench_.choosers.pickers().empty());
  EXPECT_FALSE(page().IsModified());
  EXPECT_EQ(Applied(), Lines{});
  EXPECT_EQ(bench_.directory.Values(testing::kTabPaths[0]), Addressed());
}

TEST_F(DynamicDistlistTest, AnAddressIsModified) {
  Open("CPropPageDynamicDistlist", {Addressed()});
  page().SelectRow(IDC_EMAIL_LIST, "one@y");
  bench_.dialogs.PlayNext([](HeadlessUser& user) {
    user.TypeText(IDC_QUOTA_WARN, "more");
    user.Click(kDialogOk);
  });
  page().Click(IDC_EMAIL_MODIFY);
  EXPECT_EQ(Applied(), Lines{R"(otherMailbox ["one@ymore", "one@z"])"});
}

TEST_F(DynamicDistlistTest, NeedsNoAddress) {
  Open("CPropPageDynamicDistlist", {kList});
  EXPECT_EQ(Applied(), Lines{});
}

TEST_F(DynamicDistlistTest, ShowsTheAddressControlsOfSeveralAndWritesNoneOfThem) {
  Open("CPropPageDynamicDistlist", {Addressed(), Addressed(), Addressed()});
  EXPECT_TRUE(dialog().IsShown(IDC_EMAIL_LIST));
  EXPECT_EQ(page().Rows(IDC_EMAIL_LIST), Lines{});
  bench_.dialogs.PlayNext([](HeadlessUser& user) {
    user.TypeText(IDC_QUOTA_WARN, "new@x");
    user.Click(kDialogOk);
  });
  page().Click(IDC_EMAIL_ADD);
  EXPECT_EQ(page().Rows(IDC_EMAIL_LIST), Lines{"NEW@X"});
  EXPECT_EQ(Applied(), Lines{});
}

}  // namespace
}  // namespace pelora
