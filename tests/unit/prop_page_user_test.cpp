// SPDX-License-Identifier: Apache-2.0
#include "pages/objects/prop_page_user.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <tuple>
#include <vector>

#include "resources/resource.h"
#include "tests/unit/page_bench.h"

namespace pelora {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using testing::FakeAttributes;
using testing::FakeChoosers;
using testing::FaultPoint;
using ::testing::IsEmpty;
using ::testing::Not;
using testing::OpenPage;
using testing::PageBench;

const std::string kAda = "LDAP://CN=Ada,DC=x";
const std::string kBob = "LDAP://CN=Bob,DC=x";
constexpr RowIndex kNothing = 99;

const std::array<std::string, 6> kTypes = {"active user",   "shared store only",
                                           "room",          "equipment",
                                           "administrator", "system administrator"};

class UserTest : public ::testing::Test {
 protected:
  void Open(FakeAttributes attributes) {
    bench_.directory.AddObject(kAda, std::move(attributes));
    OpenOn({kAda});
  }
  /// Opens the page on two users.
  void OpenTwo(FakeAttributes ada, FakeAttributes bob) {
    bench_.directory.AddObject(kAda, std::move(ada));
    bench_.directory.AddObject(kBob, std::move(bob));
    OpenOn({kAda, kBob});
  }
  void OpenOn(const std::vector<std::string>& paths) {
    page_.emplace(bench_, new CPropPageUser(bench_.platform), bench_.Template(IDD_PROPPAGE_USER),
                  paths);
  }

  OpenPage<CPropPageUser>& page() { return *page_; }
  HeadlessDialog& dialog() { return page().dialog(); }
  RowIndex AccountType() {
    return dialog().ComboBox(IDC_ACCOUNT_TYPE).Selection().value_or(kNothing);
  }
  void ChooseType(RowIndex type) {
    EXPECT_EQ(page().user().SelectComboRow(IDC_ACCOUNT_TYPE, type), UserAnswer::kDone) << type;
  }
  std::string Capacity() { return dialog().Text(IDC_CAPACITY); }
  bool CapacityEnabled() {
    EXPECT_EQ(dialog().IsEnabled(IDC_CAPACITY), dialog().IsEnabled(IDC_CAPACITY_LABEL));
    return dialog().IsEnabled(IDC_CAPACITY);
  }
  /// Whether a user without an address is refused.
  bool AddressRequired() {
    std::string message;
    const HRESULT status = page().page().ValidateAll(&message);
    // Without an account nothing would be validated.
    EXPECT_EQ(dialog().Check(IDC_PELORA_ACCOUNT), CheckState::kChecked);
    EXPECT_EQ(message, FAILED(status) ? "Missing Email Address" : "");
    return FAILED(status);
  }

  /// What an apply stages on Ada, each "attribute value", or "attribute cleared".
  std::vector<std::string> Applied() {
    bench_.directory.ClearCalls();
    EXPECT_TRUE(page().Apply());
    return Staged(kAda);
  }
  std::vector<std::string> Staged(const std::string& path) {
    std::vector<std::string> staged;
    for (const testing::DirectoryCall& call : bench_.directory.calls()) {
      if (call.path != path) continue;
      if (call.kind == testing::DirectoryCall::Kind::kPut) {
        staged.push_back(call.name + " " + ToText(call.value));
      } else if (call.kind == testing::DirectoryCall::Kind::kPutEx) {
        EXPECT_EQ(call.control, ADS_PROPERTY_CLEAR);
        staged.push_back(call.name + " cleared");
      }
    }
    return staged;
  }

  PageBench bench_;
  std::optional<OpenPage<CPropPageUser>> page_;
};

/// A user with everything set.
FakeAttributes FullUser() {
  return {{"peloraAccount", Variant::Integer(1)},
          {"peloraHidden", Variant::Integer(1)},
          {"mail", Variant::String("ada@x")},
          {"otherMailbox", Variant::StringArray({"ada@y", "ada@z"})},
          {"peloraSendAsPrivilege", Variant::String("CN=Bob,DC=x")},
          {"peloraQuotaOverride", Variant::Integer(1)},
          {"peloraQuotaWarn", Variant::Integer(10)},
          {"peloraQuotaSoft", Variant::Integer(20)},
          {"peloraQuotaHard", Variant::Integer(30)},
          {"peloraAdmin", Variant::Integer(2)},
          {"peloraSharedStoreOnly", Variant::Integer(0)},
          {"peloraUserServer", Variant::String("node1")}};
}

FakeAttributes Resource(const std::string& type) {
  return {{"peloraResourceType", Variant::String(type)},
          {"peloraSharedStoreOnly", Variant::Integer(1)},
          {"peloraResourceCapacity", Variant::Integer(12)}};
}

TEST_F(UserTest, IsATabOfItsTemplateAndTitle) {
  Open({});
  EXPECT_EQ(page().page().dialog_template(), 102);
  EXPECT_EQ(page().page().title(), "Pelora");
  EXPECT_EQ(bench_.Template(102).title, "Pelora");
}

TEST_F(UserTest, BindsUsersAsUsers) {
  bench_.directory.AddObject(kAda, {}, {});
  testing::SelectionDataObject selection({kAda});
  const auto page = Ref<CPropPageUser>::Adopt(new CPropPageUser(bench_.platform));
  EXPECT_EQ(static_cast<IShellExtInit&>(*page).Initialize(&selection), S_OK);
  HeadlessDialog standing(bench_.Template(IDD_PROPPAGE_USER), *page);
  EXPECT_EQ(standing.Open(), E_NOINTERFACE);
  EXPECT_EQ(bench_.messages.records().size(), 1U);
}

TEST_F(UserTest, TheListHoldsTheSixTypesInOrder) {
  Open({});
  const IComboBox& list = dialog().ComboBox(IDC_ACCOUNT_TYPE);
  ASSERT_EQ(list.Count(), kTypes.size());
  for (RowIndex row = 0; row < kTypes.size(); ++row) EXPECT_EQ(list.Text(row), kTypes.at(row));
}

TEST_F(UserTest, ReadsInTheOrderPersonQuotaAccountAndOwn) {
  bench_.directory.AddObject(kAda);
  testing::SelectionDataObject selection({kAda});
  const auto page = Ref<CPropPageUser>::Adopt(new CPropPageUser(bench_.platform));
  EXPECT_EQ(static_cast<IShellExtInit&>(*page).Initialize(&selection), S_OK);
  HeadlessDialog standing(bench_.Template(IDD_PROPPAGE_USER), *page);
  EXPECT_EQ(standing.Open(), S_OK);
  std::vector<std::string> read;
  for (const testing::DirectoryCall& call : bench_.directory.calls()) {
    if (call.kind == testing::DirectoryCall::Kind::kGet) read.push_back(call.name);
  }
  EXPECT_THAT(read,
              ElementsAre("mail", "otherMailbox", "peloraSendAsPrivilege", "peloraQuotaOverride",
                          "peloraQuotaWarn", "peloraQuotaSoft", "peloraQuotaHard",
                          "peloraQuotaCompanyWarningRecipients", "peloraAccount", "peloraHidden",
                          "peloraUserServer", "peloraSharedStoreOnly", "peloraAdmin",
                          "peloraResourceType", "peloraResourceCapacity"));
}

// Which type of account is shown.

/// What is stored and which row that is.
struct TypeRow {
  const char* name;
  std::optional<std::string> resource_type;
  std::optional<std::int32_t> shared_store_only;
  std::optional<std::int32_t> admin;
  RowIndex row;
};

void PrintTo(const TypeRow& row, std::ostream* out) { *out << row.name; }

class UserTypeTest : public UserTest, public ::testing::WithParamInterface<TypeRow> {};

INSTANTIATE_TEST_SUITE_P(
    EveryRule, UserTypeTest,
    ::testing::Values(TypeRow{"NothingStored", {}, {}, {}, 0}, TypeRow{"Room", "room", 1, {}, 2},
                      TypeRow{"RoomInCapitalsWithAdmin", "ROOM", {}, 1, 2},
                      TypeRow{"Equipment", "equipment", 1, {}, 3},
                      TypeRow{"EquipmentInMixedCaseWithAll", "EquipMent", 1, 2, 3},
                      TypeRow{"SharedStore", {}, 1, {}, 1},
                      TypeRow{"SharedStoreBeforeAdmin", {}, 1, 2, 1},
                      TypeRow{"AnyNumberIsASharedStore", {}, -5, {}, 1},
                      TypeRow{"UnknownResourceWithSharedStore", "rooms", 1, {}, 1},
                      TypeRow{"UnknownResource", "projector", 0, 0, 0},
                      TypeRow{"Administrator", {}, 0, 1, 4},
                      TypeRow{"SystemAdministrator", {}, {}, 2, 5},
                      TypeRow{"LevelBeyondTheList", {}, {}, 3, kNothing},
                      TypeRow{"LevelFarBeyondTheList", {}, {}, 2147483647, kNothing},
                      TypeRow{"LevelThatIsNegative", {}, {}, -1, kNothing}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_P(UserTypeTest, IsTheFirstRuleThatHolds) {
  FakeAttributes attributes;
  if (GetParam().resource_type) {
    attributes["peloraResourceType"] = Variant::String(*GetParam().resource_type);
  }
  if (GetParam().shared_store_only) {
    attributes["peloraSharedStoreOnly"] = Variant::Integer(*GetParam().shared_store_only);
  }
  if (GetParam().admin) attributes["peloraAdmin"] = Variant::Integer(*GetParam().admin);
  attributes["peloraAccount"] = Variant::Integer(1);
  Open(attributes);
  EXPECT_EQ(AccountType(), GetParam().row);
  EXPECT_EQ(CapacityEnabled(), GetParam().row == 2 || GetParam().row == 3);
  EXPECT_EQ(AddressRequired(), GetParam().row == 0);
}

TEST_F(UserTest, UsersThatDifferInAnyTypeAttributeShowNoType) {
  const std::vector<FakeAttributes> differences = {
      {{"peloraResourceType", Variant::String("room")}},
      {{"peloraSharedStoreOnly", Variant::Integer(1)}},
      {{"peloraAdmin", Variant::Integer(1)}},
  };
  for (const FakeAttributes& difference : differences) {
    page_.reset();
    OpenTwo({}, difference);
    EXPECT_EQ(AccountType(), kNothing);
    EXPECT_FALSE(CapacityEnabled());
  }
}

TEST_F(UserTest, SharedStoresOfAnyNumberAgree) {
  OpenTwo({{"peloraSharedStoreOnly", Variant::Integer(1)}},
          {{"peloraSharedStoreOnly", Variant::Integer(7)}});
  EXPECT_EQ(AccountType(), 1U);
}

TEST_F(UserTest, ResourceTypesInOtherCaseDiffer) {
  OpenTwo(Resource("room"), Resource("ROOM"));
  EXPECT_EQ(AccountType(), kNothing);
}

// Capacity and home server.

TEST_F(UserTest, AnAbsentCapacityShowsZero) {
  Open({});
  EXPECT_EQ(Capacity(), "0");
}

TEST_F(UserTest, CapacitiesThatDifferLeaveTheFieldEmpty) {
  OpenTwo({{"peloraResourceCapacity", Variant::Integer(1)}}, {});
  EXPECT_EQ(Capacity(), "");
}

TEST_F(UserTest, TheCapacityTakesDigitsOnly) {
  Open(Resource("room"));
  EXPECT_EQ(page().user().TypeText(IDC_CAPACITY, "3a"), UserAnswer::kCharactersRefused);
  EXPECT_EQ(Capacity(), "123");
}

TEST_F(UserTest, TheServerIsShownAndCannotBeTyped) {
  Open({{"peloraUserServer", Variant::String("node1")}});
  EXPECT_EQ(dialog().Text(IDC_SERVER), "node1");
  EXPECT_EQ(page().user().TypeText(IDC_SERVER, "2"), UserAnswer::kReadOnly);
}

TEST_F(UserTest, ServersThatDifferLeaveTheFieldEmpty) {
  OpenTwo({{"peloraUserServer", Variant::String("node1")}}, {});
  EXPECT_EQ(dialog().Text(IDC_SERVER), "");
}

TEST_F(UserTest, AServerIsChosenFromTheComputers) {
  Open({});
  bench_.directory.AddObject("LDAP://CN=node2,DC=x", {{"cn", Variant::String("node2")}});
  bench_.choosers.Choose({"LDAP://CN=node2,DC=x"});
  page().Click(IDC_SERVER_SELECT);
  EXPECT_EQ(dialog().Text(IDC_SERVER), "node2");
  EXPECT_TRUE(page().IsModified());
  const FakeChoosers::PickerRun& run = bench_.choosers.pickers().at(0);
  EXPECT_EQ(run.init.scope.types, 0x6U) << "computers";
  EXPECT_EQ(run.init.options, 0x2U) << "one only";
  EXPECT_EQ(run.owner, &dialog());
  EXPECT_EQ(run.owner_control, 0U);
  EXPECT_THAT(Applied(), Contains(R"(peloraUserServer "node2")"));
}

TEST_F(UserTest, NoServerChosenIsNoEdit) {
  Open({{"peloraUserServer", Variant::String("node1")}});
  bench_.choosers.Choose(std::vector<std::string>{});
  page().Click(IDC_SERVER_SELECT);
  EXPECT_EQ(dialog().Text(IDC_SERVER), "node1");
  EXPECT_FALSE(page().IsModified());
}

TEST_F(UserTest, ACancelledOrFailedChoiceOfAServerChangesNothing) {
  Open({{"peloraUserServer", Variant::String("node1")}});
  page().Click(IDC_SERVER_SELECT);
  bench_.choosers.Choose({"LDAP://CN=Nobody,DC=x"});
  page().Click(IDC_SERVER_SELECT);
  EXPECT_EQ(bench_.choosers.pickers().size(), 2U);
  EXPECT_EQ(dialog().Text(IDC_SERVER), "node1");
  EXPECT_FALSE(page().IsModified());
  EXPECT_THAT(bench_.messages.records(), IsEmpty());
}

// The choice of a type.

class UserChoiceTest : public UserTest, public ::testing::WithParamInterface<RowIndex> {};

INSTANTIATE_TEST_SUITE_P(EveryType, UserChoiceTest, ::testing::Range(RowIndex{0}, RowIndex{6}));

TEST_P(UserChoiceTest, SwitchesCapacityAndNeedOfAnAddress) {
  const RowIndex before = GetParam() == 0 ? 1 : 0;
  Open({{"peloraAccount", Variant::Integer(1)},
        {"peloraSharedStoreOnly", Variant::Integer(static_cast<std::int32_t>(before))}});
  ASSERT_EQ(AccountType(), before);
  ChooseType(GetParam());
  EXPECT_EQ(CapacityEnabled(), GetParam() == 2 || GetParam() == 3);
  EXPECT_EQ(AddressRequired(), GetParam() == 0);
  EXPECT_TRUE(page().IsModified());
}

TEST_P(UserChoiceTest, WritesTheTypeItStandsFor) {
  struct Written {
    std::string admin;
    std::string shared_store_only;
    std::string resource_type;
  };
  const std::array<Written, 6> written = {{{"0", "0", "cleared"},
                                           {"0", "1", "cleared"},
                                           {"0", "1", R"("room")"},
                                           {"0", "1", R"("equipment")"},
                                           {"1", "0", "cleared"},
                                           {"2", "0", "cleared"}}};
  const RowIndex before = GetParam() == 0 ? 1 : 0;
  Open({{"peloraSharedStoreOnly", Variant::Integer(static_cast<std::int32_t>(before))}});
  ChooseType(GetParam());
  const Written& expected = written.at(GetParam());
  EXPECT_THAT(Applied(), ElementsAre("peloraAdmin " + expected.admin,
                                     "peloraSharedStoreOnly " + expected.shared_store_only,
                                     "peloraResourceType " + expected.resource_type,
                                     "peloraResourceCapacity 0"));
}

// What an apply writes.

TEST_F(UserTest, AnUntouchedUserHasItsResourceTypeAndCapacityWrittenAndNothingElse) {
  Open(FullUser());
  EXPECT_FALSE(page().IsModified());
  EXPECT_THAT(Applied(), ElementsAre("peloraResourceType cleared", "peloraResourceCapacity 0"));
  FakeAttributes expected = FullUser();
  expected["peloraResourceCapacity"] = Variant::Integer(0);
  EXPECT_EQ(bench_.directory.Values(kAda), expected);
}

TEST_F(UserTest, AnUntouchedRoomStaysAsItIs) {
  const FakeAttributes room = Resource("room");
  Open(room);
  EXPECT_THAT(Applied(), ElementsAre(R"(peloraResourceType "room")", "peloraResourceCapacity 12"));
  EXPECT_EQ(bench_.directory.Values(kAda), room);
}

TEST_F(UserTest, TheResourceTypeIsWrittenInLowerCaseOnEveryApply) {
  Open(Resource("EQUIPMENT"));
  const auto written =
      ElementsAre(R"(peloraResourceType "equipment")", "peloraResourceCapacity 12");
  EXPECT_THAT(Applied(), written);
  EXPECT_THAT(Applied(), written);
}

TEST_F(UserTest, ALevelBeyondTheListIsKeptAndTheResourceTypeCleared) {
  Open({{"peloraAdmin", Variant::Integer(3)}, {"peloraResourceType", Variant::String("other")}});
  EXPECT_THAT(Applied(), ElementsAre("peloraResourceType cleared", "peloraResourceCapacity 0"));
  EXPECT_EQ(bench_.directory.Value(kAda, "peloraAdmin"), Variant::Integer(3));
}

TEST_F(UserTest, ATypeIsWrittenOnceAfterItsChoice) {
  Open({});
  ChooseType(4);
  EXPECT_THAT(Applied(), AllOf(Contains("peloraAdmin 1"), Contains("peloraSharedStoreOnly 0")));
  EXPECT_THAT(Applied(), ElementsAre("peloraResourceType cleared", "peloraResourceCapacity 0"));
}

TEST_F(UserTest, AServerIsWrittenOnceAfterItsChoice) {
  Open({});
  bench_.directory.AddObject("LDAP://CN=node2,DC=x", {{"cn", Variant::String("node2")}});
  bench_.choosers.Choose({"LDAP://CN=node2,DC=x"});
  page().Click(IDC_SERVER_SELECT);
  EXPECT_THAT(Applied(), Contains(R"(peloraUserServer "node2")"));
  EXPECT_THAT(Applied(), Not(Contains(R"(peloraUserServer "node2")")));
}

TEST_F(UserTest, ARoomThatBecomesAnActiveUserKeepsItsCapacity) {
  FakeAttributes room = Resource("room");
  room["mail"] = Variant::String("room@x");
  Open(room);
  ChooseType(0);
  EXPECT_FALSE(CapacityEnabled());
  EXPECT_EQ(Capacity(), "12");
  EXPECT_THAT(Applied(), ElementsAre("peloraAdmin 0", "peloraSharedStoreOnly 0",
                                     "peloraResourceType cleared", "peloraResourceCapacity 12"));
}

TEST_F(UserTest, ACapacityTypedForARoomIsWrittenEvenWhenTheRoomIsGivenUp) {
  Open({});
  ChooseType(2);
  page().Type(IDC_CAPACITY, "40");
  ChooseType(0);
  EXPECT_THAT(Applied(), ElementsAre("peloraAdmin 0", "peloraSharedStoreOnly 0",
                                     "peloraResourceType cleared", "peloraResourceCapacity 40"));
}

TEST_F(UserTest, ACapacityTypedForARoomIsWrittenWithIt) {
  Open(Resource("room"));
  page().Type(IDC_CAPACITY, "40");
  EXPECT_TRUE(page().IsModified());
  EXPECT_THAT(Applied(), ElementsAre(R"(peloraResourceType "room")", "peloraResourceCapacity 40"));
}

TEST_F(UserTest, ACapacityEditedWhileNoResourceIsChosenIsNotWrittenUntilOneIs) {
  Open({});
  // No hand can reach the disabled field; a program can.
  dialog().SetText(IDC_CAPACITY, "40");
  EXPECT_THAT(Applied(), ElementsAre("peloraResourceType cleared"));
  // The edit is remembered over an apply.
  EXPECT_THAT(Applied(), ElementsAre("peloraResourceType cleared"));
  ChooseType(2);
  EXPECT_THAT(Applied(), Contains("peloraResourceCapacity 40"));
}

TEST_F(UserTest, AChangeToNoTypeWritesAnOrdinaryUserAndAsksForNoAddress) {
  Open({{"peloraAccount", Variant::Integer(1)},
        {"peloraSharedStoreOnly", Variant::Integer(1)},
        {"peloraResourceType", Variant::String("room")}});
  // No hand can do this; a program can.
  dialog().ComboBox(IDC_ACCOUNT_TYPE).Select(std::nullopt);
  page().page().OnCommand(IDC_ACCOUNT_TYPE, ControlNotification::kSelectionChange);
  EXPECT_FALSE(CapacityEnabled());
  EXPECT_FALSE(AddressRequired());
  EXPECT_THAT(Applied(), ElementsAre("peloraAdmin 0", "peloraSharedStoreOnly 0",
                                     "peloraResourceType cleared", "peloraResourceCapacity 0"));
}

/// A type that is loaded, the last one being none, and whether the capacity is edited then.
using TypeAndEdit = std::tuple<RowIndex, bool>;
class UserCollectTest : public UserTest, public ::testing::WithParamInterface<TypeAndEdit> {};

INSTANTIATE_TEST_SUITE_P(EveryTypeAndNone, UserCollectTest,
                         ::testing::Combine(::testing::Range(RowIndex{0}, RowIndex{7}),
                                            ::testing::Bool()));

TEST_P(UserCollectTest, WritesTheResourceTypeAlwaysAndTheCapacityUnlessEditedForNoResource) {
  const auto [type, is_edited] = GetParam();
  const bool is_resource = type == 2 || type == 3;
  FakeAttributes stored = {{"peloraResourceCapacity", Variant::Integer(12)}};
  if (type == 1) stored["peloraSharedStoreOnly"] = Variant::Integer(1);
  if (is_resource) stored["peloraResourceType"] = Variant::String(kTypes.at(type));
  if (type > 3) stored["peloraAdmin"] = Variant::Integer(static_cast<std::int32_t>(type) - 3);
  Open(stored);
  ASSERT_EQ(AccountType(), type < 6 ? type : kNothing);
  if (is_edited) dialog().SetText(IDC_CAPACITY, "40");
  std::vector<std::string> expected = {is_resource
                                           ? "peloraResourceType \"" + kTypes.at(type) + "\""
                                           : "peloraResourceType cleared"};
  if (!is_edited) expected.emplace_back("peloraResourceCapacity 12");
  if (is_edited && is_resource) expected.emplace_back("peloraResourceCapacity 40");
  EXPECT_EQ(Applied(), expected);
}

TEST_F(UserTest, AnErasedCapacityIsCleared) {
  Open(Resource("room"));
  EXPECT_EQ(page().user().EraseText(IDC_CAPACITY), UserAnswer::kDone);
  EXPECT_THAT(Applied(),
              ElementsAre(R"(peloraResourceType "room")", "peloraResourceCapacity cleared"));
}

TEST_F(UserTest, AnEmptiedServerIsCleared) {
  Open({{"peloraUserServer", Variant::String("node1")}});
  dialog().SetText(IDC_SERVER, "");
  EXPECT_TRUE(page().IsModified());
  EXPECT_THAT(Applied(), Contains("peloraUserServer cleared"));
}

TEST_F(UserTest, EverythingIsWrittenInTheOrderPersonQuotaAccountAndOwn) {
  Open(FullUser());
  page().SelectRow(IDC_SENDAS_LIST, "CN=Bob,DC=x");
  page().Click(IDC_SENDAS_DELETE);
  page().SelectRow(IDC_EMAIL_LIST, "ada@z");
  page().Click(IDC_EMAIL_DEFAULT);
  page().Type(IDC_QUOTA_WARN, "11");
  page().Type(IDC_QUOTA_SOFT, "21");
  page().Type(IDC_QUOTA_HARD, "31");
  page().Click(IDC_QUOTA_OVERRIDE);
  page().Click(IDC_PELORA_ACCOUNT);
  page().Click(IDC_PELORA_HIDDEN);
  ChooseType(3);
  page().Type(IDC_CAPACITY, "5");
  dialog().SetText(IDC_SERVER, "node2");
  EXPECT_THAT(Applied(),
              ElementsAre(R"(mail "ada@z")", R"(otherMailbox ["ada@x", "ada@y"])",
                          "peloraSendAsPrivilege []", "peloraQuotaWarn 11", "peloraQuotaSoft 21",
                          "peloraQuotaHard 31", "peloraQuotaOverride 0", "peloraAccount 0",
                          "peloraHidden 0", "peloraAdmin 0", "peloraSharedStoreOnly 1",
                          R"(peloraResourceType "equipment")", "peloraResourceCapacity 5",
                          R"(peloraUserServer "node2")"));
}

TEST_F(UserTest, OneCommitCarriesEverything) {
  Open(FullUser());
  ChooseType(0);
  EXPECT_THAT(Applied(), Not(IsEmpty()));
  EXPECT_EQ(bench_.directory.CountOf(testing::DirectoryCall::Kind::kSetInfo), 1U);
  EXPECT_EQ(bench_.directory.live_objects(), 0U);
}

// Validation.

TEST_F(UserTest, AnActiveUserWithoutAnAddressIsRefused) {
  Open({{"peloraAccount", Variant::Integer(1)}});
  EXPECT_FALSE(page().Apply());
  ASSERT_EQ(bench_.messages.records().size(), 1U);
  EXPECT_EQ(bench_.messages.records().front().message.text,
            "Validation of input fields failed: Missing Email Address\r\n\r\n"
            "Error code: 0X80004005");
  EXPECT_THAT(bench_.Writes(), IsEmpty());
}

TEST_F(UserTest, WithoutAnAccountNothingIsValidated) {
  Open({});
  EXPECT_TRUE(page().Apply());
  EXPECT_THAT(bench_.messages.records(), IsEmpty());
}

// Several users.

TEST_F(UserTest, ASelectionOfSeveralHidesAddressesAndDelegates) {
  const std::vector<ControlId> hidden = {206, 237, 247, 248, 207, 208, 209, 213, 238, 239};
  OpenTwo(FullUser(), FullUser());
  for (const HeadlessControl& control : dialog().controls()) {
    const bool expected = std::ranges::find(hidden, control.item.id) == hidden.end();
    EXPECT_EQ(control.shown, expected) << control.item.id;
  }
}

TEST_F(UserTest, ASelectionOfOneShowsEverything) {
  Open(FullUser());
  for (const HeadlessControl& control : dialog().controls()) {
    EXPECT_TRUE(control.shown) << control.item.id;
  }
}

TEST_F(UserTest, SeveralUsersThatDifferShowMixedValues) {
  OpenTwo(FullUser(), {{"peloraQuotaWarn", Variant::Integer(10)}});
  EXPECT_EQ(dialog().Check(IDC_PELORA_ACCOUNT), CheckState::kIndeterminate);
  EXPECT_EQ(dialog().Check(IDC_PELORA_HIDDEN), CheckState::kIndeterminate);
  EXPECT_EQ(dialog().Check(IDC_QUOTA_OVERRIDE), CheckState::kIndeterminate);
  EXPECT_EQ(dialog().Text(IDC_QUOTA_WARN), "10");
  EXPECT_EQ(dialog().Text(IDC_QUOTA_SOFT), "");
  EXPECT_EQ(dialog().Text(IDC_QUOTA_HARD), "");
  EXPECT_EQ(dialog().Text(IDC_SERVER), "");
  EXPECT_EQ(Capacity(), "0");
  EXPECT_EQ(AccountType(), kNothing);
  EXPECT_FALSE(page().IsModified());
}

TEST_F(UserTest, AnUntouchedMixedSelectionClearsTheResourceTypeOfEveryUser) {
  OpenTwo(Resource("room"), FullUser());
  EXPECT_EQ(AccountType(), kNothing);
  const auto cleared = ElementsAre("peloraResourceType cleared", "peloraResourceCapacity cleared");
  EXPECT_THAT(Applied(), cleared);
  EXPECT_THAT(Staged(kBob), cleared);
}

TEST_F(UserTest, AnUntouchedSelectionOfRoomsWritesTypeAndCapacityToEach) {
  OpenTwo(Resource("room"), Resource("room"));
  const auto written = ElementsAre(R"(peloraResourceType "room")", "peloraResourceCapacity 12");
  EXPECT_THAT(Applied(), written);
  EXPECT_THAT(Staged(kBob), written);
}

TEST_F(UserTest, ATypeChosenForSeveralIsWrittenToEach) {
  OpenTwo(FullUser(), {});
  ChooseType(1);
  const auto written = ElementsAre("peloraAdmin 0", "peloraSharedStoreOnly 1",
                                   "peloraResourceType cleared", "peloraResourceCapacity 0");
  EXPECT_THAT(Applied(), written);
  EXPECT_THAT(Staged(kBob), written);
}

TEST_F(UserTest, SeveralActiveUsersAreNotAskedForAnAddress) {
  const FakeAttributes user = {{"peloraAccount", Variant::Integer(1)}};
  OpenTwo(user, user);
  EXPECT_EQ(AccountType(), 0U);
  EXPECT_TRUE(page().Apply());
  EXPECT_THAT(bench_.messages.records(), IsEmpty());
}

TEST_F(UserTest, AListIsNeverWrittenToSeveralUsers) {
  OpenTwo(FullUser(), FullUser());
  bench_.dialogs.PlayNext([](HeadlessUser& user) {
    user.TypeText(IDC_EMAIL_ADDRESS, "new@x");
    user.Click(kDialogOk);
  });
  // No hand can reach the hidden button; a program can.
  page().page().OnCommand(IDC_EMAIL_ADD, ControlNotification::kClicked);
  EXPECT_EQ(page().Rows(IDC_EMAIL_LIST).size(), 1U);
  EXPECT_THAT(Applied(), ElementsAre("peloraResourceType cleared", "peloraResourceCapacity 0"));
}

TEST_F(UserTest, AFailedCommitEndsTheRoundAndIsShown) {
  OpenTwo(FullUser(), FullUser());
  bench_.faulty.plan().Fail(FaultPoint::kSetInfo, 1, E_ACCESSDENIED);
  EXPECT_FALSE(page().Apply());
  EXPECT_THAT(Staged(kBob), IsEmpty());
  ASSERT_EQ(bench_.messages.records().size(), 1U);
  EXPECT_EQ(bench_.messages.records().front().message.text,
            "Unknown error occured\r\n\r\nError code: 0X80070005");
}

// The command table.

/// Who marks the page: one notification and whether it does.
struct CommandRow {
  ControlId control;
  ControlNotification notification;
};

void PrintTo(const CommandRow& row, std::ostream* out) { *out << row.control; }

class UserCommandTest : public UserTest, public ::testing::WithParamInterface<CommandRow> {};

INSTANTIATE_TEST_SUITE_P(EveryEdit, UserCommandTest,
                         ::testing::Values(CommandRow{214, ControlNotification::kClicked},
                                           CommandRow{243, ControlNotification::kClicked},
                                           CommandRow{284, ControlNotification::kSelectionChange},
                                           CommandRow{298, ControlNotification::kEditChange},
                                           CommandRow{208, ControlNotification::kClicked},
                                           CommandRow{213, ControlNotification::kClicked},
                                           CommandRow{239, ControlNotification::kClicked},
                                           CommandRow{202, ControlNotification::kClicked},
                                           CommandRow{203, ControlNotification::kEditChange},
                                           CommandRow{204, ControlNotification::kEditChange},
                                           CommandRow{205, ControlNotification::kEditChange},
                                           CommandRow{242, ControlNotification::kEditChange}));

TEST_P(UserCommandTest, MarksThePageModified) {
  Open(FullUser());
  page().page().OnCommand(GetParam().control, GetParam().notification);
  EXPECT_TRUE(page().IsModified());
}

TEST_F(UserTest, SelectingRowsOnlyUpdatesTheButtons) {
  Open(FullUser());
  page().SelectRow(IDC_EMAIL_LIST, "ada@y");
  page().SelectRow(IDC_SENDAS_LIST, "CN=Bob,DC=x");
  for (const ControlId button : {208, 209, 213, 239}) {
    EXPECT_TRUE(dialog().IsEnabled(button)) << button;
  }
  EXPECT_FALSE(page().IsModified());
}

TEST_F(UserTest, AnswersOneToAModificationWithoutASelectionAndNoughtToTheRest) {
  Open(FullUser());
  EXPECT_EQ(page().page().OnCommand(IDC_EMAIL_MODIFY, ControlNotification::kClicked), 1);
  EXPECT_EQ(page().page().OnCommand(IDC_SENDAS_ADD, ControlNotification::kClicked), 0);
  EXPECT_EQ(page().page().OnCommand(IDC_EMAIL_ADD, ControlNotification::kSelectionChange), 0);
  EXPECT_FALSE(page().IsModified());
}

}  // namespace
}  // namespace pelora
