// SPDX-License-Identifier: Apache-2.0
// The pages one by one: what they load, when they are valid, what they choose and what they write.
#include "wizards/wizard_pages.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "resources/resource.h"
#include "tests/unit/wizards/wizard_bench.h"
#include "wizards/wizard_ext_user.h"

namespace pelora {
namespace {

using testing::FakeChoosers;
using testing::OpenWizardPage;
using testing::PageBench;
using Lines = std::vector<std::string>;

const std::string kServer = "LDAP://CN=mail01,DC=x";
const std::string kAda = "LDAP://CN=Ada,DC=x";

void AddServerAndUser(PageBench& bench) {
  bench.directory.AddObject(kServer, {{"cn", Variant::String("mail01")},
                                      {"distinguishedName", Variant::String("CN=mail01,DC=x")}});
  bench.directory.AddObject(kAda, {{"cn", Variant::String("Ada")},
                                   {"distinguishedName", Variant::String("CN=Ada,DC=x")}});
}

// Users.

class UserPageTest : public ::testing::Test {
 protected:
  /// The page with its box checked.
  void Check() {
    page_.Click(IDC_CREATE_PELORA);
    (void)page_.TakeLog();
  }
  bool CapacityEnabled() {
    EXPECT_EQ(page_.dialog().IsEnabled(IDC_CAPACITY_LABEL), page_.dialog().IsEnabled(IDC_CAPACITY));
    return page_.dialog().IsEnabled(IDC_CAPACITY);
  }

  PageBench bench_;
  OpenWizardPage<CWizardExtUser> page_{bench_};
};

TEST_F(UserPageTest, ListsTheSixTypesWithActiveUserSelected) {
  const Lines types = {"active user", "shared store only", "room",
                       "equipment",   "administrator",     "system administrator"};
  IComboBox& list = page_.dialog().ComboBox(IDC_ACCOUNT_TYPE);
  ASSERT_EQ(list.Count(), types.size());
  for (RowIndex row = 0; row < types.size(); ++row) EXPECT_EQ(list.Text(row), types[row]);
  EXPECT_EQ(list.Selection(), 0U);
}

TEST_F(UserPageTest, AnActiveUserNeedsAnAddressAndOtherTypesNeedNone) {
  EXPECT_EQ(page_.TakeLog(), Lines{"buttons 0 off"});
  page_.Click(IDC_CREATE_PELORA);
  EXPECT_EQ(page_.TakeLog(), Lines{"buttons 0 off"});
  page_.Type(IDC_NEW_ADDRESS, "a");
  EXPECT_EQ(page_.TakeLog(), Lines{"buttons 0 on"});
  EXPECT_EQ(page_.user().EraseText(IDC_NEW_ADDRESS), UserAnswer::kDone);
  EXPECT_EQ(page_.TakeLog(), Lines{"buttons 0 off"});
  for (const RowIndex type : {1U, 2U, 3U, 4U, 5U}) {
    page_.SelectType(type);
    EXPECT_EQ(page_.TakeLog(), Lines{"buttons 0 on"}) << type;
  }
  page_.SelectType(0);
  EXPECT_EQ(page_.TakeLog(), Lines{"buttons 0 off"});
  std::string message;
  EXPECT_EQ(page_.wizard().ValidateAll(&message), E_FAIL);
  EXPECT_EQ(message, "Missing Email Address");
}

TEST_F(UserPageTest, NoTypeSelectedNeedsNoAddressAndStandsForNothing) {
  Check();
  page_.dialog().ComboBox(IDC_ACCOUNT_TYPE).Select(std::nullopt);
  EXPECT_TRUE(page_.wizard().IsValid());
  EXPECT_EQ(page_.Changes()[1], "peloraAdmin=0 (integer)");
  EXPECT_EQ(page_.Changes()[2], "peloraSharedStoreOnly=0 (integer)");
  EXPECT_EQ(page_.Changes()[4], "peloraResourceCapacity= (integer) skipped");
}

TEST_F(UserPageTest, TheTypeAloneEnablesTheCapacity) {
  Check();
  EXPECT_FALSE(CapacityEnabled());
  const std::array<bool, 6> expected = {false, false, true, true, false, false};
  for (const RowIndex type : {1U, 2U, 3U, 4U, 5U, 0U}) {
    page_.SelectType(type);
    EXPECT_EQ(CapacityEnabled(), expected.at(type)) << type;
  }
}

TEST_F(UserPageTest, UncheckingTheBoxLeavesARoomsCapacityEnabledAndWritesNothingOfIt) {
  Check();
  page_.SelectType(2);
  page_.Type(IDC_CAPACITY, "12");
  page_.Click(IDC_CREATE_PELORA);
  EXPECT_TRUE(CapacityEnabled());
  EXPECT_FALSE(page_.dialog().IsEnabled(IDC_ACCOUNT_TYPE));
  EXPECT_EQ(page_.Changes(), Lines{"peloraAccount=0 (integer)"});
  page_.Click(IDC_CREATE_PELORA);
  EXPECT_TRUE(CapacityEnabled());
  page_.SelectType(0);
  EXPECT_FALSE(CapacityEnabled());
}

TEST_F(UserPageTest, TheCapacityTakesDigitsAndIsNotValidated) {
  Check();
  page_.SelectType(2);
  (void)page_.TakeLog();
  EXPECT_EQ(page_.user().TypeText(IDC_CAPACITY, "1x2"), UserAnswer::kCharactersRefused);
  EXPECT_EQ(page_.dialog().Text(IDC_CAPACITY), "12");
  EXPECT_EQ(page_.TakeLog(), Lines{});
}

TEST_F(UserPageTest, CollectsEveryFieldInOrder) {
  AddServerAndUser(bench_);
  Check();
  EXPECT_EQ(page_.Changes(),
            (Lines{"peloraAccount=1 (integer)", "peloraAdmin=0 (integer)",
                   "peloraSharedStoreOnly=0 (integer)", "peloraResourceType= (string) skipped",
                   "peloraResourceCapacity= (integer) skipped", "peloraHidden=0 (integer)",
                   "peloraUserServer= (string)", "mail= (string)"}));
  page_.Type(IDC_NEW_ADDRESS, "new@x");
  page_.Click(IDC_PELORA_HIDDEN);
  bench_.choosers.Choose({kServer});
  page_.Click(IDC_SERVER_SELECT);
  page_.SelectType(2);
  page_.Type(IDC_CAPACITY, "12");
  EXPECT_EQ(page_.Changes(),
            (Lines{"peloraAccount=1 (integer)", "peloraAdmin=0 (integer)",
                   "peloraSharedStoreOnly=1 (integer)", "peloraResourceType=room (string)",
                   "peloraResourceCapacity=12 (integer)", "peloraHidden=1 (integer)",
                   "peloraUserServer=mail01 (string)", "mail=new@x (string)"}));
}

struct TypeRow {
  RowIndex row;
  std::string admin;
  std::string shared;
  std::string resource;
};

TEST_F(UserPageTest, EveryTypeWritesWhatItStandsFor) {
  const std::array<TypeRow, 6> rows = {{{0, "0", "0", ""},
                                        {1, "0", "1", ""},
                                        {2, "0", "1", "room"},
                                        {3, "0", "1", "equipment"},
                                        {4, "1", "0", ""},
                                        {5, "2", "0", ""}}};
  Check();
  page_.SelectType(2);
  page_.Type(IDC_CAPACITY, "007");
  for (const TypeRow& row : rows) {
    page_.SelectType(row.row);
    const std::string path = "LDAP://CN=T" + std::to_string(row.row) + ",DC=x";
    const Ref<IADs> object = bench_.directory.MakeNewObject(path);
    EXPECT_EQ(page_.extension().SetObject(object.Get()), S_OK);
    bench_.directory.ClearCalls();
    EXPECT_EQ(page_.extension().WriteData(nullptr, NewObjectPhase::kPreCommit), 1);
    Lines expected = {"Put " + path + " peloraAccount 1",
                      "Put " + path + " peloraAdmin " + row.admin,
                      "Put " + path + " peloraSharedStoreOnly " + row.shared};
    if (!row.resource.empty()) {
      expected.push_back("Put " + path + " peloraResourceType \"" + row.resource + "\"");
      expected.push_back("Put " + path + " peloraResourceCapacity 7");
    }
    expected.push_back("Put " + path + " peloraHidden 0");
    EXPECT_EQ(bench_.Writes(), expected) << row.row;
  }
}

TEST_F(UserPageTest, AnEmptyCapacityOfARoomIsNotWritten) {
  Check();
  page_.SelectType(2);
  const Ref<IADs> object = bench_.directory.MakeNewObject("LDAP://CN=R,DC=x");
  EXPECT_EQ(page_.extension().SetObject(object.Get()), S_OK);
  EXPECT_EQ(page_.extension().WriteData(nullptr, NewObjectPhase::kPreCommit), 1);
  for (const std::string& line : bench_.Writes()) {
    EXPECT_EQ(line.find("peloraResourceCapacity"), std::string::npos) << line;
  }
}

/// The buttons that choose a computer: each fills 242 of its page.
template <class Page>
class ServerChoiceTest : public ::testing::Test {};
using PagesWithAServer = ::testing::Types<CWizardExtUser, CWizardExtCompany>;
TYPED_TEST_SUITE(ServerChoiceTest, PagesWithAServer);

TYPED_TEST(ServerChoiceTest, OneComputerIsChosenByItsCommonName) {
  PageBench bench;
  AddServerAndUser(bench);
  OpenWizardPage<TypeParam> page(bench);
  page.Click(IDC_CREATE_PELORA);
  EXPECT_EQ(page.user().TypeText(IDC_SERVER, "typed"), UserAnswer::kReadOnly);
  bench.choosers.Choose({kServer, kAda});
  (void)page.TakeLog();
  page.Click(IDC_SERVER_SELECT);
  EXPECT_EQ(page.dialog().Text(IDC_SERVER), "mail01");
  EXPECT_EQ(page.TakeLog(), Lines{});
  ASSERT_EQ(bench.choosers.pickers().size(), 1U);
  const FakeChoosers::PickerRun& run = bench.choosers.pickers()[0];
  EXPECT_EQ(run.owner, &page.dialog());
  EXPECT_EQ(run.init.options, 2U);
  EXPECT_EQ(run.init.scope.types, 6U);
  EXPECT_EQ(run.init.scope.down_level, 0x80000008U);
}

TYPED_TEST(ServerChoiceTest, AChoiceThatFailsOrIsCancelledChangesAndShowsNothing) {
  PageBench bench;
  AddServerAndUser(bench);
  OpenWizardPage<TypeParam> page(bench);
  page.Click(IDC_CREATE_PELORA);
  bench.choosers.Choose({kServer});
  page.Click(IDC_SERVER_SELECT);
  bench.choosers.Choose(nullptr);
  page.Click(IDC_SERVER_SELECT);
  bench.choosers.Choose(std::vector<std::string>{});
  page.Click(IDC_SERVER_SELECT);
  bench.choosers.Choose({"LDAP://CN=gone,DC=x"});
  page.Click(IDC_SERVER_SELECT);
  bench.choosers.FailAt(FakeChoosers::Step::kRun, E_FAIL);
  page.Click(IDC_SERVER_SELECT);
  EXPECT_EQ(bench.choosers.pickers().size(), 5U);
  EXPECT_EQ(page.dialog().Text(IDC_SERVER), "mail01");
  EXPECT_EQ(bench.messages.records().size(), 0U);
}

// Contacts and groups.

TEST(ContactPage, NeedsAnAddress) {
  PageBench bench;
  OpenWizardPage<CWizardExtContact> page(bench);
  page.Click(IDC_CREATE_PELORA);
  EXPECT_EQ(page.TakeLog().back(), "buttons 0 off");
  std::string message;
  EXPECT_EQ(page.wizard().ValidateAll(&message), E_FAIL);
  EXPECT_EQ(message, "Missing Email Address");
  page.Type(IDC_NEW_ADDRESS, "a");
  EXPECT_EQ(page.TakeLog(), Lines{"buttons 0 on"});
  EXPECT_EQ(page.Changes(),
            (Lines{"peloraAccount=1 (integer)", "peloraHidden=0 (integer)", "mail=a (string)"}));
}

TEST(DistlistPage, NeedsNoAddressAndNeverHoldsTheWizardBack) {
  PageBench bench;
  OpenWizardPage<CWizardExtDistlist> page(bench);
  EXPECT_EQ(page.TakeLog(), Lines{"buttons 0 on"});
  page.Click(IDC_CREATE_PELORA);
  EXPECT_EQ(page.TakeLog(), Lines{"buttons 0 on"});
  // The address is not watched: it decides nothing.
  page.Type(IDC_NEW_ADDRESS, "a");
  EXPECT_EQ(page.TakeLog(), Lines{});
  page.Click(IDC_PELORA_HIDDEN);
  EXPECT_EQ(page.Changes(),
            (Lines{"peloraAccount=1 (integer)", "peloraHidden=1 (integer)", "mail=a (string)"}));
}

// Companies.

TEST(CompanyPage, WithoutAdministratorAndServerHasAccountAndVisibilityOnly) {
  PageBench bench;
  OpenWizardPage<CWizardExtCompany> page(bench);
  page.Click(IDC_CREATE_PELORA);
  EXPECT_EQ(page.TakeLog(), (Lines{"buttons 0 on", "buttons 0 on"}));
  const Ref<IADs> object = bench.directory.MakeNewObject("LDAP://OU=New,DC=x", {IID_IADsOU});
  EXPECT_EQ(page.extension().SetObject(object.Get()), S_OK);
  EXPECT_EQ(page.extension().WriteData(nullptr, NewObjectPhase::kPreCommit), 1);
  EXPECT_EQ(object->SetInfo(), S_OK);
  EXPECT_EQ(bench.directory.Values("LDAP://OU=New,DC=x"),
            (testing::FakeAttributes{{"peloraAccount", Variant::Integer(1)},
                                     {"peloraHidden", Variant::Integer(0)}}));
}

TEST(CompanyPage, StoresTheAdministratorsNameAndTheServersCommonName) {
  PageBench bench;
  AddServerAndUser(bench);
  OpenWizardPage<CWizardExtCompany> page(bench);
  page.Click(IDC_CREATE_PELORA);
  EXPECT_EQ(page.user().TypeText(IDC_SYSTEM_ADMIN, "typed"), UserAnswer::kReadOnly);
  bench.choosers.Choose({kAda, kServer});
  page.Click(IDC_SYSTEM_ADMIN_SELECT);
  EXPECT_EQ(bench.choosers.pickers().back().init.scope.down_level, 0x80000001U);
  EXPECT_EQ(bench.choosers.pickers().back().init.options, 2U);
  EXPECT_EQ(bench.choosers.pickers().back().owner, &page.dialog());
  bench.choosers.Choose(nullptr);
  page.Click(IDC_SYSTEM_ADMIN_SELECT);
  bench.choosers.Choose({kServer});
  page.Click(IDC_SERVER_SELECT);
  EXPECT_EQ(page.Changes(), (Lines{"peloraAccount=1 (integer)", "peloraHidden=0 (integer)",
                                   "peloraSystemAdmin=CN=Ada,DC=x (string)",
                                   "peloraCompanyServer=mail01 (string)"}));
}

// Servers.

TEST(ServerPage, BringsPortsAndPathAndWaitsForAnAddress) {
  PageBench bench;
  OpenWizardPage<CWizardExtServer> page(bench);
  EXPECT_EQ(page.dialog().Text(IDC_HOST_ADDRESS), "");
  EXPECT_EQ(page.dialog().Text(IDC_HTTP_PORT), "236");
  EXPECT_EQ(page.dialog().Text(IDC_SSL_PORT), "237");
  EXPECT_EQ(page.dialog().Text(IDC_FILE_PATH), "/var/run/pelora");
  EXPECT_EQ(page.dialog().Check(IDC_CONTAINS_PUBLIC), CheckState::kUnchecked);
  page.Click(IDC_CREATE_PELORA);
  EXPECT_FALSE(page.NextEnabled());
  page.Type(IDC_HOST_ADDRESS, "mail.x");
  EXPECT_TRUE(page.NextEnabled());
  EXPECT_EQ(page.Changes(),
            (Lines{"peloraAccount=1 (integer)", "peloraHostAddress=mail.x (string)",
                   "peloraHttpPort=236 (integer)", "peloraSslPort=237 (integer)",
                   "peloraFilePath=/var/run/pelora (string)", "peloraContainsPublic=0 (integer)"}));
  page.Click(IDC_CONTAINS_PUBLIC);
  EXPECT_EQ(page.Changes().back(), "peloraContainsPublic=1 (integer)");
}

TEST(ServerPage, NamesTheFirstFieldThatIsMissing) {
  PageBench bench;
  OpenWizardPage<CWizardExtServer> page(bench);
  page.Click(IDC_CREATE_PELORA);
  const auto missing = [&page] {
    std::string message;
    const HRESULT status = page.wizard().ValidateAll(&message);
    EXPECT_EQ(status, message.empty() ? S_OK : E_FAIL);
    return message;
  };
  const auto erase = [&page](ControlId id) {
    (void)page.TakeLog();
    EXPECT_EQ(page.user().EraseText(id), UserAnswer::kDone);
    EXPECT_EQ(page.TakeLog().size(), 1U) << id;
  };
  erase(246);
  erase(247);
  erase(249);
  EXPECT_EQ(missing(), "Missing Server Address");
  page.Type(IDC_HOST_ADDRESS, "mail.x");
  EXPECT_EQ(missing(), "Missing HTTP/SSL Port");
  page.Type(IDC_SSL_PORT, "237");
  EXPECT_EQ(missing(), "Missing File Path");
  page.Type(IDC_FILE_PATH, "/p");
  EXPECT_EQ(missing(), "");
  EXPECT_TRUE(page.NextEnabled());
  erase(247);
  EXPECT_EQ(missing(), "Missing HTTP/SSL Port");
  page.Type(IDC_HTTP_PORT, "236");
  EXPECT_EQ(missing(), "");
  EXPECT_EQ(page.user().TypeText(IDC_HTTP_PORT, "x"), UserAnswer::kCharactersRefused);
}

TEST(ServerPage, AnEmptyPortIsNotWritten) {
  PageBench bench;
  OpenWizardPage<CWizardExtServer> page(bench);
  page.Click(IDC_CREATE_PELORA);
  page.Type(IDC_HOST_ADDRESS, "mail.x");
  EXPECT_EQ(page.user().EraseText(IDC_HTTP_PORT), UserAnswer::kDone);
  const Ref<IADs> object = bench.directory.MakeNewObject("LDAP://CN=S,DC=x");
  EXPECT_EQ(page.extension().SetObject(object.Get()), S_OK);
  EXPECT_EQ(page.extension().WriteData(nullptr, NewObjectPhase::kPreCommit), 1);
  EXPECT_EQ(bench.Writes(), (Lines{"Put LDAP://CN=S,DC=x peloraAccount 1",
                                   "Put LDAP://CN=S,DC=x peloraHostAddress \"mail.x\"",
                                   "Put LDAP://CN=S,DC=x peloraSslPort 237",
                                   "Put LDAP://CN=S,DC=x peloraFilePath \"/var/run/pelora\"",
                                   "Put LDAP://CN=S,DC=x peloraContainsPublic 0"}));
}

TEST(ServerPage, WhatIsTypedReplacesTheDefaultsForGood) {
  PageBench bench;
  OpenWizardPage<CWizardExtServer> page(bench);
  page.Click(IDC_CREATE_PELORA);
  page.Type(IDC_HTTP_PORT, "80");
  EXPECT_EQ(page.Tell(PageNotification::kWizardBack), 0);
  EXPECT_EQ(page.Tell(PageNotification::kSetActive), 0);
  EXPECT_EQ(page.dialog().Text(IDC_HTTP_PORT), "80");
}

TEST(ServerPage, AnUncheckedBoxWritesThatThereIsNoAccountOnly) {
  PageBench bench;
  OpenWizardPage<CWizardExtServer> page(bench);
  EXPECT_EQ(page.Changes(), Lines{"peloraAccount=0 (integer)"});
}

// Address lists and dynamic distribution lists.

template <class Page>
class ListPageTest : public ::testing::Test {};
using ListPages = ::testing::Types<CWizardExtAddresslist, CWizardExtDynamicDistlist>;
TYPED_TEST_SUITE(ListPageTest, ListPages);

TYPED_TEST(ListPageTest, NeedsAQueryWhateverTheBaseHolds) {
  PageBench bench;
  OpenWizardPage<TypeParam> page(bench);
  page.Click(IDC_CREATE_PELORA);
  EXPECT_FALSE(page.NextEnabled());
  bench.choosers.Browse(1, "LDAP://dc1/OU=Sales,DC=x");
  (void)page.TakeLog();
  page.Click(IDC_SEARCH_BASE_SELECT);
  EXPECT_EQ(page.dialog().Text(IDC_SEARCH_BASE), "OU=Sales,DC=x");
  EXPECT_EQ(page.TakeLog(), Lines{});
  EXPECT_FALSE(page.wizard().IsValid());
  std::string message;
  EXPECT_EQ(page.wizard().ValidateAll(&message), E_FAIL);
  EXPECT_EQ(message, "Missing Search Query");
  page.Type(IDC_SEARCH_QUERY, "(cn=*)");
  EXPECT_TRUE(page.NextEnabled());
}

TYPED_TEST(ListPageTest, TheBaseCanOnlyBeChosen) {
  PageBench bench;
  OpenWizardPage<TypeParam> page(bench);
  EXPECT_EQ(page.user().TypeText(IDC_SEARCH_BASE, "x"), UserAnswer::kDisabled);
  page.Click(IDC_CREATE_PELORA);
  EXPECT_EQ(page.user().TypeText(IDC_SEARCH_BASE, "x"), UserAnswer::kDisabled);
  bench.choosers.Browse(1, "LDAP://OU=Sales,DC=x");
  page.Click(IDC_SEARCH_BASE_SELECT);
  EXPECT_EQ(page.user().TypeText(IDC_SEARCH_BASE, "x"), UserAnswer::kDisabled);
  for (const std::int32_t answer : {2, 0, -1}) {
    bench.choosers.Browse(answer, "LDAP://OU=Other,DC=x");
    page.Click(IDC_SEARCH_BASE_SELECT);
  }
  EXPECT_EQ(page.dialog().Text(IDC_SEARCH_BASE), "OU=Sales,DC=x");
  EXPECT_EQ(bench.messages.records().size(), 0U);
  EXPECT_EQ(bench.choosers.browsers().size(), 4U);
}

TEST(ListPages, CollectInTheirOrder) {
  PageBench bench;
  bench.choosers.Browse(1, "LDAP://OU=Sales,DC=x");
  OpenWizardPage<CWizardExtAddresslist> addresses(bench);
  addresses.Click(IDC_CREATE_PELORA);
  addresses.Click(IDC_SEARCH_BASE_SELECT);
  addresses.Type(IDC_SEARCH_QUERY, "(cn=*)");
  addresses.Click(IDC_PELORA_HIDDEN);
  EXPECT_EQ(addresses.Changes(),
            (Lines{"peloraAccount=1 (integer)", "peloraHidden=1 (integer)",
                   "peloraBase=OU=Sales,DC=x (string)", "peloraFilter=(cn=*) (string)"}));
  OpenWizardPage<CWizardExtDynamicDistlist> list(bench);
  list.Click(IDC_CREATE_PELORA);
  list.Click(IDC_SEARCH_BASE_SELECT);
  list.Type(IDC_SEARCH_QUERY, "(cn=*)");
  list.Type(IDC_NEW_ADDRESS, "all@x");
  EXPECT_EQ(list.Changes(),
            (Lines{"peloraAccount=1 (integer)", "peloraHidden=0 (integer)", "mail=all@x (string)",
                   "peloraBase=OU=Sales,DC=x (string)", "peloraFilter=(cn=*) (string)"}));
}

TEST(ListPages, AnEmptyBaseAndAddressAreNotWritten) {
  PageBench bench;
  OpenWizardPage<CWizardExtDynamicDistlist> page(bench);
  page.Click(IDC_CREATE_PELORA);
  page.Type(IDC_SEARCH_QUERY, "(cn=*)");
  const Ref<IADs> object = bench.directory.MakeNewObject("LDAP://CN=L,DC=x");
  EXPECT_EQ(page.extension().SetObject(object.Get()), S_OK);
  EXPECT_EQ(page.extension().WriteData(nullptr, NewObjectPhase::kPreCommit), 1);
  EXPECT_EQ(bench.Writes(),
            (Lines{"Put LDAP://CN=L,DC=x peloraAccount 1", "Put LDAP://CN=L,DC=x peloraHidden 0",
                   "Put LDAP://CN=L,DC=x peloraFilter \"(cn=*)\""}));
}

// Their first pages.

template <class Page>
class NamePageTest : public ::testing::Test {};
using NamePages = ::testing::Types<CWizardAddresslist, CWizardDynamicDistlist>;
TYPED_TEST_SUITE(NamePageTest, NamePages);

TYPED_TEST(NamePageTest, WaitsForAName) {
  PageBench bench;
  OpenWizardPage<TypeParam> page(bench);
  EXPECT_EQ(page.dialog().Text(IDC_CONTAINER_NAME), "x/Sales");
  EXPECT_EQ(page.TakeLog(), Lines{"buttons 0 off"});
  EXPECT_EQ(page.Tell(PageNotification::kSetActive), 0);
  EXPECT_EQ(page.TakeLog(), Lines{"buttons 0 off"});
  std::string message;
  EXPECT_EQ(page.wizard().ValidateAll(&message), E_FAIL);
  EXPECT_EQ(message, "Missing Name");
  EXPECT_EQ(page.user().TypeText(IDC_OBJECT_NAME, "Al"), UserAnswer::kDone);
  EXPECT_EQ(page.TakeLog(), (Lines{"buttons 0 on", "buttons 0 on"}));
  EXPECT_EQ(page.wizard().object_name(), "Al");
  EXPECT_EQ(page.Tell(PageNotification::kSetActive), 0);
  EXPECT_EQ(page.TakeLog(), Lines{"buttons 0 on"});
  EXPECT_EQ(page.user().EraseText(IDC_OBJECT_NAME), UserAnswer::kDone);
  EXPECT_EQ(page.TakeLog(), Lines{"buttons 0 off"});
  EXPECT_EQ(page.wizard().object_name(), "");
  using enum PageNotification;
  for (const PageNotification notification :
       {kWizardNext, kWizardFinish, kQueryCancel, kKillActive, kApply}) {
    EXPECT_EQ(page.Tell(notification), 0);
  }
  EXPECT_EQ(page.TakeLog(), Lines{});
}

TYPED_TEST(NamePageTest, HasTheObjectMadeInThePreCommitPhase) {
  PageBench bench;
  OpenWizardPage<TypeParam> page(bench);
  page.Type(IDC_OBJECT_NAME, "All");
  (void)page.TakeLog();
  using enum NewObjectPhase;
  for (const NewObjectPhase phase : {kCommit, kPostCommit, kCleanup}) {
    EXPECT_EQ(page.extension().WriteData(nullptr, phase), 1);
  }
  EXPECT_EQ(page.TakeLog(), Lines{});
  EXPECT_EQ(page.extension().WriteData(nullptr, kPreCommit), 1);
  EXPECT_EQ(page.TakeLog(), Lines{"create All"});
  EXPECT_EQ(page.console().references(), 2U);
  page.console().create_status = E_ACCESSDENIED;
  EXPECT_EQ(page.extension().WriteData(nullptr, kPreCommit), 0);
  page.console().offers_primary_site = false;
  (void)page.TakeLog();
  EXPECT_EQ(page.extension().WriteData(nullptr, kPreCommit), 0);
  EXPECT_EQ(page.TakeLog(), Lines{});
  EXPECT_EQ(page.extension().Initialize(nullptr, nullptr, "", nullptr, {}), S_OK);
  EXPECT_EQ(page.extension().WriteData(nullptr, kPreCommit), 0);
  EXPECT_EQ(bench.messages.records().size(), 0U);
  EXPECT_EQ(bench.directory.Log(), Lines{});
}

TYPED_TEST(NamePageTest, SumsUpTheName) {
  PageBench bench;
  OpenWizardPage<TypeParam> page(bench);
  std::string text;
  EXPECT_EQ(page.extension().GetSummaryInfo(text), S_OK);
  EXPECT_EQ(text, "Fullname: \r\n");
  page.Type(IDC_OBJECT_NAME, "Übersicht \"A\"");
  EXPECT_EQ(page.extension().GetSummaryInfo(text), S_OK);
  EXPECT_EQ(text, "Fullname: Übersicht \"A\"\r\n");
}

TYPED_TEST(NamePageTest, TellsOfANameInUse) {
  PageBench bench;
  OpenWizardPage<TypeParam> page(bench);
  EXPECT_EQ(page.extension().OnError(nullptr, kObjectAlreadyExists, NewObjectPhase::kCommit), S_OK);
  ASSERT_EQ(bench.messages.records().size(), 1U);
  EXPECT_EQ(bench.messages.records()[0].message.text,
            "The new object cannot be created because the name is already in use.\r\n"
            "Please select a different name and try again.");
}

}  // namespace
}  // namespace pelora
