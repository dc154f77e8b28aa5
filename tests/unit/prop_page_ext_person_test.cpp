// SPDX-License-Identifier: Apache-2.0
#include "pages/prop_page_ext_person.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "resources/resource.h"
#include "tests/unit/page_bench.h"

namespace pelora {
namespace {

using ::testing::ElementsAre;
using testing::FakeChoosers;
using testing::FaultPoint;
using ::testing::IsEmpty;
using testing::OpenPage;
using testing::PageBench;

const std::string kAda = "LDAP://CN=Ada,DC=x";
const std::string kBob = "LDAP://CN=Bob,DC=x";

/// A page of the person group and nothing else.
class PersonPage final : public CSnapInPropertyPage {
 public:
  PersonPage(const Platform& platform, bool email_required)
      : CSnapInPropertyPage(platform, IID_IADs, {}, IDD_PROPPAGE_USER, "Person"),
        person_(*this, platform, email_required) {
    Add(person_);
  }

  [[nodiscard]] CPropPageExtPerson& person() { return person_; }

 private:
  ~PersonPage() override = default;

  CPropPageExtPerson person_;
};

class PersonTest : public ::testing::Test {
 protected:
  /// Opens the page on one object.
  void Open(testing::FakeAttributes attributes, bool email_required = false) {
    bench_.directory.AddObject(kAda, std::move(attributes));
    OpenOn({kAda}, email_required);
  }
  void OpenOn(const std::vector<std::string>& paths, bool email_required = false) {
    page_.emplace(bench_, new PersonPage(bench_.platform, email_required),
                  bench_.Template(IDD_PROPPAGE_USER), paths);
  }
  /// Three addresses, "Mia@x" being the default.
  void OpenWithAddresses(bool email_required = false) {
    Open({{"mail", Variant::String("Mia@x")},
          {"otherMailbox", Variant::StringArray({"zoe@x", "ada@x"})}},
         email_required);
  }

  OpenPage<PersonPage>& page() { return *page_; }
  std::vector<std::string> Addresses() { return page().Rows(IDC_EMAIL_LIST); }
  std::vector<std::string> Delegates() { return page().Rows(IDC_SENDAS_LIST); }
  void SelectAddress(const std::string& text) { page().SelectRow(IDC_EMAIL_LIST, text); }
  /// Answers the next address dialog.
  void TypeNext(const std::string& address, std::int32_t button = kDialogOk) {
    bench_.dialogs.PlayNext([address, button](HeadlessUser& user) {
      user.EraseText(IDC_EMAIL_ADDRESS);
      user.TypeText(IDC_EMAIL_ADDRESS, address);
      user.Click(static_cast<ControlId>(button));
    });
  }
  void AddAddress(const std::string& address) {
    TypeNext(address);
    page().Click(IDC_EMAIL_ADD);
  }
  void AddToDirectory(const std::string& name) {
    bench_.directory.AddObject("LDAP://" + name, {{"distinguishedName", Variant::String(name)}});
  }
  /// Which of Delete, Modify and Set as default are enabled.
  std::vector<bool> AddressButtons() {
    return {page().dialog().IsEnabled(IDC_EMAIL_DELETE),
            page().dialog().IsEnabled(IDC_EMAIL_MODIFY),
            page().dialog().IsEnabled(IDC_EMAIL_DEFAULT)};
  }
  /// Lets something in the template's way be reached all the same.
  void Enable(ControlId id) { page().dialog().SetEnabled(id, true); }
  std::vector<std::string> WritesOf(const std::string& path, std::vector<std::string> changes) {
    for (std::string& change : changes) change = "Put " + path + " " + change;
    changes.push_back("SetInfo " + path);
    return changes;
  }

  PageBench bench_;
  std::optional<OpenPage<PersonPage>> page_;
};

TEST_F(PersonTest, TheDefaultAddressIsShownInCapitalsAmongTheOthers) {
  OpenWithAddresses();
  EXPECT_THAT(Addresses(), ElementsAre("ada@x", "MIA@X", "zoe@x"));
  EXPECT_FALSE(page().IsModified());
  EXPECT_THAT(AddressButtons(), ElementsAre(false, false, false));
}

TEST_F(PersonTest, ASingleOtherAddressIsAListOfOne) {
  Open({{"otherMailbox", Variant::String("ada@x")}});
  EXPECT_THAT(Addresses(), ElementsAre("ada@x"));
}

TEST_F(PersonTest, AMailOfSeveralValuesIsNoDefaultAddress) {
  Open({{"mail", Variant::StringArray({"ada@x", "bob@x"})}});
  EXPECT_THAT(Addresses(), IsEmpty());
}

TEST_F(PersonTest, AMailThatCannotBeReadLeavesTheOtherAddresses) {
  bench_.faulty.plan().FailAttribute(FaultPoint::kGet, "mail", 1, E_ACCESSDENIED);
  OpenWithAddresses();
  EXPECT_THAT(Addresses(), ElementsAre("ada@x", "zoe@x"));
  EXPECT_THAT(bench_.messages.records(), IsEmpty());
}

TEST_F(PersonTest, DelegatesAreShownWithoutDeletedOnes) {
  Open({{"peloraSendAsPrivilege",
         Variant::StringArray(
             {"CN=Zoe,DC=x", "CN=Gone\\0ADEL:1234,CN=Deleted Objects,DC=x", "CN=Bob,DC=x"})}});
  EXPECT_THAT(Delegates(), ElementsAre("CN=Bob,DC=x", "CN=Zoe,DC=x"));
}

TEST_F(PersonTest, TheNextChangeOfTheDelegatesDropsDeletedOnes) {
  Open({{"peloraSendAsPrivilege",
         Variant::StringArray(
             {"CN=Zoe,DC=x", "CN=Gone\\0ADEL:1234,CN=Deleted Objects,DC=x", "CN=Bob,DC=x"})}});
  page().SelectRow(IDC_SENDAS_LIST, "CN=Bob,DC=x");
  page().Click(IDC_SENDAS_DELETE);
  EXPECT_TRUE(page().Apply());
  EXPECT_THAT(bench_.Writes(), WritesOf(kAda, {R"(peloraSendAsPrivilege ["CN=Zoe,DC=x"])"}));
}

TEST_F(PersonTest, TheListOfAddressesGetsTwoTabStops) {
  OpenWithAddresses();
  const HeadlessControl* list = page().dialog().Find(IDC_EMAIL_LIST);
  const int width = page().dialog().ClientWidth(IDC_EMAIL_LIST);
  EXPECT_GT(width, 1);
  EXPECT_THAT(list->list_box->tab_stops(), ElementsAre(width / 2, width));
}

TEST_F(PersonTest, AnUntouchedPageWritesNothing) {
  OpenWithAddresses();
  EXPECT_TRUE(page().Apply());
  EXPECT_THAT(bench_.Writes(), ElementsAre("SetInfo " + kAda));
}

TEST_F(PersonTest, TheFirstAddressBecomesTheDefaultAndLaterOnesDoNot) {
  Open({});
  AddAddress("Ada@x");
  EXPECT_THAT(Addresses(), ElementsAre("ADA@X"));
  EXPECT_TRUE(page().IsModified());
  AddAddress("Bob@x");
  EXPECT_THAT(Addresses(), ElementsAre("ADA@X", "Bob@x"));
  EXPECT_TRUE(page().Apply());
  EXPECT_THAT(bench_.Writes(), WritesOf(kAda, {R"(mail "Ada@x")", R"(otherMailbox ["Bob@x"])"}));
}

TEST_F(PersonTest, AddingBesideADefaultLeavesMailAlone) {
  OpenWithAddresses();
  AddAddress("bob@x");
  EXPECT_TRUE(page().Apply());
  EXPECT_THAT(bench_.Writes(), WritesOf(kAda, {R"(otherMailbox ["zoe@x", "ada@x", "bob@x"])"}));
}

TEST_F(PersonTest, AddingBesideOthersWithoutADefaultMakesNone) {
  Open({{"otherMailbox", Variant::String("zoe@x")}});
  AddAddress("ada@x");
  EXPECT_THAT(Addresses(), ElementsAre("ada@x", "zoe@x"));
  EXPECT_TRUE(page().Apply());
  EXPECT_THAT(bench_.Writes(), WritesOf(kAda, {R"(otherMailbox ["zoe@x", "ada@x"])"}));
}

TEST_F(PersonTest, AnAddressAddedAfterAllWereDeletedIsTheDefault) {
  Open({{"mail", Variant::String("ada@x")}});
  SelectAddress("ADA@X");
  page().Click(IDC_EMAIL_DELETE);
  AddAddress("bob@x");
  EXPECT_THAT(Addresses(), ElementsAre("BOB@X"));
  EXPECT_TRUE(page().Apply());
  EXPECT_THAT(bench_.Writes(), WritesOf(kAda, {R"(mail "bob@x")", "otherMailbox []"}));
}

TEST_F(PersonTest, ANewDefaultLeavesNothingSelectedAndTheButtonsAsTheyWere) {
  OpenWithAddresses();
  SelectAddress("zoe@x");
  page().Click(IDC_EMAIL_DEFAULT);
  EXPECT_EQ(page().List(IDC_EMAIL_LIST).Selection(), std::nullopt);
  EXPECT_THAT(AddressButtons(), ElementsAre(true, true, true));
  page().Click(IDC_EMAIL_DEFAULT);
  page().Click(IDC_EMAIL_DELETE);
  EXPECT_THAT(Addresses(), ElementsAre("ada@x", "Mia@x", "ZOE@X")) << "nothing was selected";
  EXPECT_THAT(AddressButtons(), ElementsAre(false, false, false));
}

TEST_F(PersonTest, DuplicatesAreAccepted) {
  Open({});
  AddAddress("ada@x");
  AddAddress("ada@x");
  EXPECT_THAT(Addresses(), ElementsAre("ADA@X", "ada@x"));
}

TEST_F(PersonTest, TheAddressDialogIsModalToTheActiveWindowAndOpensEmpty) {
  Open({});
  bench_.dialogs.PlayNext([](HeadlessUser& user) {
    EXPECT_EQ(user.dialog().Text(IDC_EMAIL_ADDRESS), "");
    user.Click(kDialogCancel);
  });
  page().Click(IDC_EMAIL_ADD);
  ASSERT_EQ(bench_.dialogs.records().size(), 1U);
  EXPECT_TRUE(bench_.dialogs.records().front().played);
  EXPECT_EQ(bench_.dialogs.records().front().owner, nullptr);
}

TEST_F(PersonTest, ACancelledAddressChangesNothingButUpdatesTheButtons) {
  OpenWithAddresses();
  Enable(IDC_EMAIL_DELETE);
  TypeNext("bob@x", kDialogCancel);
  page().Click(IDC_EMAIL_ADD);
  EXPECT_THAT(Addresses(), ElementsAre("ada@x", "MIA@X", "zoe@x"));
  EXPECT_FALSE(page().IsModified());
  EXPECT_THAT(AddressButtons(), ElementsAre(false, false, false));
}

TEST_F(PersonTest, ModifyingAnAddressShowsItAsStoredAndReplacesIt) {
  OpenWithAddresses();
  SelectAddress("MIA@X");
  bench_.dialogs.PlayNext([](HeadlessUser& user) {
    EXPECT_EQ(user.dialog().Text(IDC_EMAIL_ADDRESS), "Mia@x");
    user.TypeText(IDC_EMAIL_ADDRESS, ".org");
    user.Click(kDialogOk);
  });
  page().Click(IDC_EMAIL_MODIFY);
  EXPECT_THAT(Addresses(), ElementsAre("ada@x", "MIA@X.ORG", "zoe@x"));
  EXPECT_TRUE(page().IsModified());
  EXPECT_TRUE(page().Apply());
  EXPECT_THAT(bench_.Writes(),
              WritesOf(kAda, {R"(mail "Mia@x.org")", R"(otherMailbox ["zoe@x", "ada@x"])"}));
}

TEST_F(PersonTest, ModifyingToTheSameTextMarksThePageButWritesNothing) {
  OpenWithAddresses();
  SelectAddress("zoe@x");
  TypeNext("zoe@x");
  page().Click(IDC_EMAIL_MODIFY);
  EXPECT_TRUE(page().IsModified());
  EXPECT_TRUE(page().Apply());
  EXPECT_THAT(bench_.Writes(), ElementsAre("SetInfo " + kAda));
}

TEST_F(PersonTest, ModifyingWithoutASelectionAnswersOneAndOpensNothing) {
  OpenWithAddresses();
  EXPECT_EQ(page().page().OnCommand(IDC_EMAIL_MODIFY, ControlNotification::kClicked), 1);
  EXPECT_THAT(bench_.dialogs.records(), IsEmpty());
  EXPECT_FALSE(page().IsModified());
}

TEST_F(PersonTest, AModificationAnswersZeroAndLeavesTheButtons) {
  for (const std::int32_t button : {kDialogCancel, kDialogOk}) {
    OpenWithAddresses();
    SelectAddress("zoe@x");
    // Nobody tells the buttons of a selection: they stay as they are.
    for (const ControlId id : {IDC_EMAIL_DELETE, IDC_EMAIL_DEFAULT}) {
      page().dialog().SetEnabled(id, false);
    }
    TypeNext("bob@x", button);
    EXPECT_EQ(page().page().OnCommand(IDC_EMAIL_MODIFY, ControlNotification::kClicked), 0);
    EXPECT_THAT(AddressButtons(), ElementsAre(false, true, false));
  }
}

TEST_F(PersonTest, OneAddressThatIsNotSelectedLeavesDeleteAsTheRequirementHasIt) {
  for (const bool required : {true, false}) {
    Open({{"mail", Variant::String("ada@x")}}, required);
    page().page().OnCommand(IDC_EMAIL_LIST, ControlNotification::kSelectionChange);
    EXPECT_THAT(AddressButtons(), ElementsAre(!required, false, false)) << required;
  }
}

TEST_F(PersonTest, ADefaultAddressReadWithASuccessCodeIsOne) {
  bench_.directory.AddObject(kAda, {{"mail", Variant::String("Mia@x")}});
  bench_.faulty.plan().Answer(FaultPoint::kGet, 1, S_FALSE);
  OpenOn({kAda});
  EXPECT_THAT(Addresses(), ElementsAre("MIA@X"));
}

TEST_F(PersonTest, NoDelegateChosenIsNoEdit) {
  Open({});
  bench_.choosers.Choose(std::vector<std::string>{});
  page().Click(IDC_SENDAS_ADD);
  EXPECT_EQ(bench_.choosers.pickers().size(), 1U);
  EXPECT_THAT(Delegates(), IsEmpty());
  EXPECT_FALSE(page().IsModified());
}

TEST_F(PersonTest, DeletingADelegateWithNothingSelectedMarksThePageAndDeletesNone) {
  Open({{"peloraSendAsPrivilege", Variant::StringArray({"CN=Bob,DC=x", "CN=Zoe,DC=x"})}});
  page().page().OnCommand(IDC_SENDAS_DELETE, ControlNotification::kClicked);
  EXPECT_THAT(Delegates(), ElementsAre("CN=Bob,DC=x", "CN=Zoe,DC=x"));
  EXPECT_TRUE(page().IsModified());
  EXPECT_TRUE(page().Apply());
  EXPECT_THAT(bench_.Writes(), ElementsAre("SetInfo " + kAda));
}

TEST_F(PersonTest, ACancelledModificationChangesNothing) {
  OpenWithAddresses();
  SelectAddress("zoe@x");
  TypeNext("bob@x", kDialogCancel);
  page().Click(IDC_EMAIL_MODIFY);
  EXPECT_THAT(Addresses(), ElementsAre("ada@x", "MIA@X", "zoe@x"));
  EXPECT_FALSE(page().IsModified());
}

TEST_F(PersonTest, DeletingTheDefaultWritesTheFirstRemainingAddressToMail) {
  OpenWithAddresses();
  SelectAddress("MIA@X");
  page().Click(IDC_EMAIL_DELETE);
  // The first one loaded, not the first one shown.
  EXPECT_THAT(Addresses(), ElementsAre("ada@x", "ZOE@X"));
  EXPECT_TRUE(page().IsModified());
  EXPECT_TRUE(page().Apply());
  EXPECT_THAT(bench_.Writes(), WritesOf(kAda, {R"(mail "zoe@x")", R"(otherMailbox ["ada@x"])"}));
}

TEST_F(PersonTest, DeletingEveryAddressWritesAnEmptyListAndLeavesMail) {
  Open({{"mail", Variant::String("ada@x")}, {"otherMailbox", Variant::String("bob@x")}});
  SelectAddress("ADA@X");
  page().Click(IDC_EMAIL_DELETE);
  page().Click(IDC_EMAIL_DELETE);
  EXPECT_THAT(Addresses(), IsEmpty());
  EXPECT_TRUE(page().Apply());
  EXPECT_THAT(bench_.Writes(), WritesOf(kAda, {"otherMailbox []"}));
  EXPECT_EQ(bench_.directory.Value(kAda, "mail"), Variant::String("ada@x"));
  EXPECT_TRUE(bench_.directory.Value(kAda, "otherMailbox").IsEmpty());
}

TEST_F(PersonTest, SettingADefaultSwapsTheTwoAddresses) {
  OpenWithAddresses();
  SelectAddress("zoe@x");
  page().Click(IDC_EMAIL_DEFAULT);
  EXPECT_THAT(Addresses(), ElementsAre("ada@x", "Mia@x", "ZOE@X"));
  EXPECT_TRUE(page().IsModified());
  EXPECT_TRUE(page().Apply());
  EXPECT_THAT(bench_.Writes(),
              WritesOf(kAda, {R"(mail "zoe@x")", R"(otherMailbox ["Mia@x", "ada@x"])"}));
}

TEST_F(PersonTest, TheDefaultAsDefaultAgainMarksThePageAndWritesNothing) {
  OpenWithAddresses();
  SelectAddress("MIA@X");
  page().Click(IDC_EMAIL_DEFAULT);
  EXPECT_TRUE(page().IsModified());
  EXPECT_TRUE(page().Apply());
  EXPECT_THAT(bench_.Writes(), ElementsAre("SetInfo " + kAda));
}

/// One row of the table of the e-mail buttons.
struct ButtonsRow {
  std::size_t addresses;
  bool selected;
  bool required;
  bool can_delete;
  bool can_modify;
  bool can_set_default;
};

class AddressButtonsTest : public PersonTest, public ::testing::WithParamInterface<ButtonsRow> {};

INSTANTIATE_TEST_SUITE_P(EveryRow, AddressButtonsTest,
                         ::testing::Values(ButtonsRow{0, false, false, false, false, false},
                                           ButtonsRow{0, false, true, false, false, false},
                                           ButtonsRow{1, false, false, true, false, false},
                                           ButtonsRow{1, false, true, false, false, false},
                                           ButtonsRow{1, true, false, true, true, false},
                                           ButtonsRow{1, true, true, false, true, false},
                                           ButtonsRow{2, false, false, false, false, false},
                                           ButtonsRow{2, true, false, true, true, true},
                                           ButtonsRow{2, true, true, true, true, true}));

TEST_P(AddressButtonsTest, FollowRowCountSelectionAndNeed) {
  testing::FakeAttributes attributes;
  if (GetParam().addresses > 0) attributes["mail"] = Variant::String("ada@x");
  if (GetParam().addresses > 1) attributes["otherMailbox"] = Variant::String("bob@x");
  Open(attributes, GetParam().required);
  if (GetParam().selected) page().List(IDC_EMAIL_LIST).Select(0);
  page().page().OnCommand(IDC_EMAIL_LIST, ControlNotification::kSelectionChange);
  EXPECT_THAT(AddressButtons(), ElementsAre(GetParam().can_delete, GetParam().can_modify,
                                            GetParam().can_set_default));
}

TEST_F(PersonTest, ButtonsFollowAfterAddAndDelete) {
  Open({{"mail", Variant::String("ada@x")}}, true);
  SelectAddress("ADA@X");
  EXPECT_THAT(AddressButtons(), ElementsAre(false, true, false));
  AddAddress("bob@x");
  EXPECT_THAT(AddressButtons(), ElementsAre(true, true, true));
  page().Click(IDC_EMAIL_DELETE);
  EXPECT_THAT(AddressButtons(), ElementsAre(false, true, false));
}

TEST_F(PersonTest, DeletingTheLastRequiredAddressWarnsAndDeletesAllTheSame) {
  Open({{"mail", Variant::String("ada@x")}}, true);
  SelectAddress("ADA@X");
  Enable(IDC_EMAIL_DELETE);
  page().Click(IDC_EMAIL_DELETE);
  ASSERT_EQ(bench_.messages.records().size(), 1U);
  const Message& warning = bench_.messages.records().front().message;
  EXPECT_EQ(warning.text, "Pelora user requires at least one email address");
  EXPECT_EQ(warning.caption, "Pelora Error");
  EXPECT_EQ(warning.icon, MessageIcon::kWarning);
  EXPECT_THAT(Addresses(), IsEmpty());
}

TEST_F(PersonTest, DeletingAnAddressThatIsNotRequiredWarnsOfNothing) {
  Open({{"mail", Variant::String("ada@x")}});
  SelectAddress("ADA@X");
  page().Click(IDC_EMAIL_DELETE);
  EXPECT_THAT(bench_.messages.records(), IsEmpty());
}

TEST_F(PersonTest, AMissingRequiredAddressRefusesTheApply) {
  Open({}, true);
  EXPECT_FALSE(page().Apply());
  ASSERT_EQ(bench_.messages.records().size(), 1U);
  EXPECT_EQ(bench_.messages.records().front().message.text,
            "Validation of input fields failed: Missing Email Address\r\n\r\n"
            "Error code: 0X80004005");
  EXPECT_THAT(bench_.Writes(), IsEmpty());
}

TEST_F(PersonTest, TheNeedOfAnAddressCanBeSwitched) {
  Open({}, true);
  page().page().person().set_email_required(false);
  EXPECT_TRUE(page().Apply());
  page().page().person().set_email_required(true);
  EXPECT_FALSE(page().Apply());
}

TEST_F(PersonTest, AValidationWithoutAMessageFailsAllTheSame) {
  Open({}, true);
  EXPECT_EQ(page().page().ValidateAll(nullptr), E_FAIL);
}

TEST_F(PersonTest, ChosenDelegatesAreAppendedInTheirOrder) {
  Open({{"peloraSendAsPrivilege", Variant::String("CN=Mia,DC=x")}});
  AddToDirectory("CN=Zoe,DC=x");
  AddToDirectory("CN=Bob,DC=x");
  bench_.choosers.Choose({"LDAP://CN=Zoe,DC=x", "LDAP://CN=Bob,DC=x"});
  page().Click(IDC_SENDAS_ADD);
  EXPECT_THAT(Delegates(), ElementsAre("CN=Bob,DC=x", "CN=Mia,DC=x", "CN=Zoe,DC=x"));
  EXPECT_TRUE(page().IsModified());
  ASSERT_EQ(bench_.choosers.pickers().size(), 1U);
  const FakeChoosers::PickerRun& run = bench_.choosers.pickers().front();
  EXPECT_EQ(run.init.scope.up_level_both_modes, 0x3F2U) << "users and groups";
  EXPECT_EQ(run.init.options, 0x3U) << "several at once";
  EXPECT_EQ(run.owner, &page().dialog());
  EXPECT_EQ(run.owner_control, IDC_SENDAS_ADD);
  bench_.directory.ClearCalls();
  EXPECT_TRUE(page().Apply());
  EXPECT_THAT(
      bench_.Writes(),
      WritesOf(kAda, {R"(peloraSendAsPrivilege ["CN=Mia,DC=x", "CN=Zoe,DC=x", "CN=Bob,DC=x"])"}));
}

TEST_F(PersonTest, ADelegateMayBeListedTwice) {
  Open({{"peloraSendAsPrivilege", Variant::String("CN=Bob,DC=x")}});
  AddToDirectory("CN=Bob,DC=x");
  bench_.choosers.Choose({"LDAP://CN=Bob,DC=x"});
  page().Click(IDC_SENDAS_ADD);
  EXPECT_THAT(Delegates(), ElementsAre("CN=Bob,DC=x", "CN=Bob,DC=x"));
}

TEST_F(PersonTest, ACancelledOrFailedPickerChangesNothing) {
  Open({});
  page().Click(IDC_SENDAS_ADD);
  bench_.choosers.Choose({"LDAP://CN=Nobody,DC=x"});
  page().Click(IDC_SENDAS_ADD);
  EXPECT_EQ(bench_.choosers.pickers().size(), 2U);
  EXPECT_THAT(Delegates(), IsEmpty());
  EXPECT_FALSE(page().IsModified());
  EXPECT_THAT(bench_.messages.records(), IsEmpty());
}

TEST_F(PersonTest, TheDelegateButtonFollowsTheSelection) {
  Open({{"peloraSendAsPrivilege", Variant::StringArray({"CN=Bob,DC=x", "CN=Zoe,DC=x"})}});
  EXPECT_FALSE(page().dialog().IsEnabled(IDC_SENDAS_DELETE));
  page().SelectRow(IDC_SENDAS_LIST, "CN=Bob,DC=x");
  EXPECT_TRUE(page().dialog().IsEnabled(IDC_SENDAS_DELETE));
  page().Click(IDC_SENDAS_DELETE);
  EXPECT_THAT(Delegates(), ElementsAre("CN=Zoe,DC=x"));
  EXPECT_TRUE(page().dialog().IsEnabled(IDC_SENDAS_DELETE));
  EXPECT_TRUE(page().IsModified());
  page().Click(IDC_SENDAS_DELETE);
  EXPECT_THAT(Delegates(), IsEmpty());
  EXPECT_FALSE(page().dialog().IsEnabled(IDC_SENDAS_DELETE)) << "the list is empty";
  EXPECT_TRUE(page().Apply());
  EXPECT_THAT(bench_.Writes(), WritesOf(kAda, {"peloraSendAsPrivilege []"}));
}

TEST_F(PersonTest, DeselectingDisablesTheDelegateButton) {
  Open({{"peloraSendAsPrivilege", Variant::String("CN=Bob,DC=x")}});
  page().SelectRow(IDC_SENDAS_LIST, "CN=Bob,DC=x");
  page().List(IDC_SENDAS_LIST).Select(std::nullopt);
  page().page().OnCommand(IDC_SENDAS_LIST, ControlNotification::kSelectionChange);
  EXPECT_FALSE(page().dialog().IsEnabled(IDC_SENDAS_DELETE));
}

TEST_F(PersonTest, ChangesComeAsMailThenOtherAddressesThenDelegates) {
  Open({{"mail", Variant::String("ada@x")},
        {"otherMailbox", Variant::String("bob@x")},
        {"peloraSendAsPrivilege", Variant::String("CN=Bob,DC=x")}});
  page().SelectRow(IDC_SENDAS_LIST, "CN=Bob,DC=x");
  page().Click(IDC_SENDAS_DELETE);
  SelectAddress("bob@x");
  page().Click(IDC_EMAIL_DEFAULT);
  EXPECT_TRUE(page().Apply());
  EXPECT_THAT(bench_.Writes(), WritesOf(kAda, {R"(mail "bob@x")", R"(otherMailbox ["ada@x"])",
                                               "peloraSendAsPrivilege []"}));
}

TEST_F(PersonTest, OnAMultiSelectionNothingIsLoadedAndNoAddressMissed) {
  bench_.directory.AddObject(kAda, {{"mail", Variant::String("ada@x")},
                                    {"otherMailbox", Variant::String("ada@y")},
                                    {"peloraSendAsPrivilege", Variant::String("CN=Bob,DC=x")}});
  bench_.directory.AddObject(kBob, {{"mail", Variant::String("bob@x")}});
  OpenOn({kAda, kBob}, true);
  EXPECT_THAT(Addresses(), IsEmpty());
  EXPECT_THAT(Delegates(), IsEmpty());
  EXPECT_TRUE(page().Apply());
  EXPECT_THAT(bench_.Writes(), ElementsAre("SetInfo " + kAda, "SetInfo " + kBob));
}

TEST_F(PersonTest, OnAMultiSelectionChangesAreCollectedAndNotWritten) {
  bench_.directory.AddObject(kAda);
  bench_.directory.AddObject(kBob);
  AddToDirectory("CN=Zoe,DC=x");
  OpenOn({kAda, kBob});
  AddAddress("ada@x");
  bench_.choosers.Choose({"LDAP://CN=Zoe,DC=x"});
  page().Click(IDC_SENDAS_ADD);
  ChangeList changes;
  EXPECT_EQ(page().page().CollectAll(changes), S_OK);
  std::vector<std::string> skipped;
  for (const AttributeChange& change : changes) {
    if (change.skip) skipped.push_back(change.name);
  }
  EXPECT_THAT(skipped, ElementsAre("mail", "otherMailbox", "peloraSendAsPrivilege"));
  EXPECT_EQ(changes.size(), 3U);
  bench_.directory.ClearCalls();
  EXPECT_TRUE(page().Apply());
  EXPECT_THAT(bench_.Writes(), ElementsAre("SetInfo " + kAda, "SetInfo " + kBob));
}

}  // namespace
}  // namespace pelora
