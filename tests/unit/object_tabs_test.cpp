// SPDX-License-Identifier: Apache-2.0
// What holds for every tab but the user's, from one table: template and title, what is read and in
// which order, what a multi-selection hides, which controls mark the tab modified, and what an
// apply writes that nobody touched anything for.
#include <algorithm>
#include <array>

#include "tests/unit/tab_bench.h"

namespace pelora {
namespace {

using enum ControlNotification;
using testing::FakeAttributes;
using testing::FaultPoint;
using testing::kTabPaths;
using testing::Lines;

using Controls = std::vector<ControlId>;

struct Tab {
  const char* component;
  DialogId dialog_template;
  const char* title;
  Lines reads;
  Controls hidden_on_several;
  /// Controls that mark the tab by a click, and by an edit.
  Controls clicks;
  Controls edits;
  /// What is written on every apply, to one object and to each of several.
  Lines written;
  Lines written_to_several = {};
};

void PrintTo(const Tab& tab, std::ostream* out) { *out << tab.component; }

const Controls kPersonal = {206, 237, 247, 248, 207, 208, 209, 213, 238, 239};
const Lines kPersonReads = {"mail", "otherMailbox", "peloraSendAsPrivilege", "peloraAccount",
                            "peloraHidden"};

const std::array kTabs = {
    Tab{"CPropPageContact",
        217,
        "Pelora",
        kPersonReads,
        kPersonal,
        {214, 243, 208, 213, 239},
        {},
        {}},
    Tab{"CPropPageDistlist",
        216,
        "Pelora",
        kPersonReads,
        kPersonal,
        {214, 243, 208, 213, 239},
        {},
        {}},
    Tab{"CPropPageAddresslist",
        221,
        "Pelora",
        {"peloraAccount", "peloraHidden", "peloraBase", "peloraFilter"},
        {},
        {214, 243},
        {258, 287},
        {}},
    Tab{"CPropPageDynamicDistlist",
        220,
        "Pelora",
        {"peloraBase", "peloraFilter", "mail", "otherMailbox", "peloraSendAsPrivilege",
         "peloraAccount", "peloraHidden"},
        {},
        {214, 243, 208, 213},
        {258, 287},
        {}},
    Tab{"CPropPageAddresslistGeneral",
        224,
        "General",
        {"cn", "name", "description"},
        {},
        {},
        {295},
        {}},
    Tab{"CPropPageDynamicDistlistGeneral",
        225,
        "General",
        {"cn", "name", "description"},
        {},
        {},
        {295},
        {}},
    Tab{"CPropPageCompany",
        101,
        "Pelora",
        {"peloraAccount", "peloraHidden", "peloraSystemAdmin", "peloraCompanyServer"},
        {},
        {214, 243},
        {272, 242},
        {}},
    Tab{"CPropPageCompanyQuota",
        204,
        "Pelora Quota",
        {"peloraQuotaOverride", "peloraQuotaWarn", "peloraQuotaSoft", "peloraQuotaHard",
         "peloraQuotaCompanyWarningRecipients", "peloraUserDefaultQuotaOverride",
         "peloraUserDefaultQuotaWarn", "peloraUserDefaultQuotaSoft", "peloraUserDefaultQuotaHard",
         "peloraQuotaUserWarningRecipients"},
        {251, 252, 216, 224, 225, 234, 232, 233},
        {202, 218, 225, 233},
        {203, 220, 222, 223},
        {}},
    Tab{"CPropPageCompanyRights",
        226,
        "Pelora Rights",
        {"peloraViewPrivilege", "peloraAdminPrivilege"},
        {221, 219},
        {228, 230},
        {},
        {}},
    Tab{"CPropPageServer",
        106,
        "Pelora",
        {"peloraAccount", "peloraHostAddress", "peloraHttpPort", "peloraSslPort", "peloraFilePath",
         "peloraContainsPublic"},
        {280, 245, 243},
        {214, 243},
        {245, 246, 247, 249},
        {R"(peloraHostAddress "192.0.2.1")", "peloraContainsPublic 1"}},
};

/// Every attribute of every tab set.
FakeAttributes Full() {
  return {
      {"cn", Variant::String("One")},
      {"name", Variant::String("One")},
      {"description", Variant::String("The first")},
      {"peloraAccount", Variant::Integer(1)},
      {"peloraHidden", Variant::Integer(1)},
      {"mail", Variant::String("one@x")},
      {"otherMailbox", Variant::StringArray({"one@y", "one@z"})},
      {"peloraSendAsPrivilege", Variant::String("CN=Bob,DC=x")},
      {"peloraBase", Variant::String("OU=Staff,DC=x")},
      {"peloraFilter", Variant::String("(mail=*)")},
      {"peloraSystemAdmin", Variant::String("CN=Ada,DC=x")},
      {"peloraCompanyServer", Variant::String("node1")},
      {"peloraQuotaOverride", Variant::Integer(1)},
      {"peloraQuotaWarn", Variant::Integer(10)},
      {"peloraQuotaSoft", Variant::Integer(20)},
      {"peloraQuotaHard", Variant::Integer(30)},
      {"peloraUserDefaultQuotaOverride", Variant::Integer(1)},
      {"peloraUserDefaultQuotaWarn", Variant::Integer(1)},
      {"peloraUserDefaultQuotaSoft", Variant::Integer(2)},
      {"peloraUserDefaultQuotaHard", Variant::Integer(3)},
      {"peloraQuotaCompanyWarningRecipients", Variant::String("CN=Ada,DC=x")},
      {"peloraQuotaUserWarningRecipients", Variant::StringArray({"CN=Ada,DC=x", "CN=Bob,DC=x"})},
      {"peloraViewPrivilege", Variant::String("OU=Other,DC=x")},
      {"peloraAdminPrivilege", Variant::String("CN=Ada,DC=x")},
      {"peloraHostAddress", Variant::String("192.0.2.1")},
      {"peloraHttpPort", Variant::Integer(236)},
      {"peloraSslPort", Variant::Integer(237)},
      {"peloraFilePath", Variant::String("/var/run/pelora")},
      {"peloraContainsPublic", Variant::Integer(1)}};
}

/// An object that differs from the full one in every attribute, but has a query, an address, a port
/// and a path.
FakeAttributes Other() {
  return {{"peloraAccount", Variant::Integer(1)},
          {"peloraFilter", Variant::String("(cn=*)")},
          {"peloraHostAddress", Variant::String("192.0.2.1")},
          {"peloraFilePath", Variant::String("/other")}};
}

class ObjectTabTest : public testing::TabTest, public ::testing::WithParamInterface<Tab> {
 protected:
  [[nodiscard]] static const Tab& tab() { return GetParam(); }
  void OpenOn(const std::vector<FakeAttributes>& objects) { Open(tab().component, objects); }
};

INSTANTIATE_TEST_SUITE_P(EveryTab, ObjectTabTest, ::testing::ValuesIn(kTabs),
                         [](const auto& row) { return std::string(row.param.component); });

TEST_P(ObjectTabTest, HasItsTemplateAndTitle) {
  OpenOn({{}});
  EXPECT_EQ(page().page().dialog_template(), tab().dialog_template);
  EXPECT_EQ(page().page().title(), tab().title);
  EXPECT_EQ(bench_.Template(tab().dialog_template).title, tab().title);
}

TEST_P(ObjectTabTest, ReadsItsAttributesInTheOrderOfItsGroups) {
  bench_.directory.AddObject(kTabPaths[0], Full(), {});
  testing::SelectionDataObject selection({kTabPaths[0]});
  const auto page = Ref<CSnapInPropertyPage>::Adopt(Make(tab().component));
  EXPECT_EQ(static_cast<IShellExtInit&>(*page).Initialize(&selection), S_OK);
  HeadlessDialog standing(bench_.Template(tab().dialog_template), *page);
  EXPECT_EQ(standing.Open(), S_OK);
  Lines read;
  for (const testing::DirectoryCall& call : bench_.directory.calls()) {
    if (call.kind == testing::DirectoryCall::Kind::kGet) read.push_back(call.name);
  }
  EXPECT_EQ(read, tab().reads);
  EXPECT_EQ(bench_.directory.live_objects(), 0U);
}

TEST_P(ObjectTabTest, LoadingMarksNothing) {
  OpenOn({Full()});
  EXPECT_FALSE(page().IsModified());
  EXPECT_TRUE(bench_.messages.records().empty());
}

TEST_P(ObjectTabTest, AnUntouchedApplyWritesWhatIsAlwaysWritten) {
  OpenOn({Full()});
  EXPECT_EQ(Applied(), tab().written);
  EXPECT_EQ(Applied(), tab().written) << "the second time";
  EXPECT_EQ(bench_.directory.Values(kTabPaths[0]), Full());
}

TEST_P(ObjectTabTest, AnUntouchedApplyToThreeWritesWhatIsAlwaysWritten) {
  OpenOn({Full(), Full(), Full()});
  (void)Applied();
  for (const std::size_t object : {0U, 1U, 2U}) {
    EXPECT_EQ(Staged(object), tab().written_to_several);
    EXPECT_EQ(bench_.directory.Values(kTabPaths[object]), Full());
  }
  EXPECT_EQ(bench_.directory.CountOf(testing::DirectoryCall::Kind::kSetInfo), 3U);
}

TEST_P(ObjectTabTest, AnUntouchedApplyToThreeThatDifferLeavesEachAsItIs) {
  OpenOn({Full(), Other(), {}});
  EXPECT_FALSE(page().IsModified());
  if (std::string_view(tab().component) == "CPropPageServer") {
    EXPECT_EQ(Refusal(), "Validation of input fields failed: Missing Server Address");
  } else {
    EXPECT_EQ(Applied(), tab().written_to_several);
  }
  EXPECT_EQ(bench_.directory.Values(kTabPaths[0]), Full());
  EXPECT_EQ(bench_.directory.Values(kTabPaths[1]), Other());
  EXPECT_EQ(bench_.directory.Values(kTabPaths[2]), FakeAttributes{});
}

TEST_P(ObjectTabTest, HidesOnlyOnSeveralObjectsWhatBelongsToOne) {
  for (const std::size_t count : {1U, 2U, 3U}) {
    OpenOn(std::vector<FakeAttributes>(count, Full()));
    Controls hidden;
    for (const HeadlessControl& control : dialog().controls()) {
      if (!control.shown) hidden.push_back(control.item.id);
    }
    Controls expected = count == 1 ? Controls{} : tab().hidden_on_several;
    std::ranges::sort(hidden);
    std::ranges::sort(expected);
    EXPECT_EQ(hidden, expected) << count;
  }
}

/// Whatever a control can report: only what the tables name may mark the page.
TEST_P(ObjectTabTest, IsMarkedByWhatItsTablesNameAndNothingElse) {
  OpenOn({Full()});
  for (const resources::DialogItem& item : bench_.Template(tab().dialog_template).items) {
    for (const ControlNotification notification : {kClicked, kSelectionChange, kEditChange}) {
      dialog().SetPageModified(false);
      // An address dialog that opens is cancelled.
      (void)Command(item.id, notification);
      const Controls none;
      const Controls& marking = notification == kClicked      ? tab().clicks
                                : notification == kEditChange ? tab().edits
                                                              : none;
      EXPECT_EQ(page().IsModified(), std::ranges::count(marking, item.id) == 1)
          << item.id << ", " << static_cast<int>(notification);
    }
  }
}

TEST_P(ObjectTabTest, ShowsABindingThatFailsOnceAndStaysEmpty) {
  bench_.directory.AddObject(kTabPaths[0], Full(), {});
  bench_.faulty.plan().Fail(FaultPoint::kGetObject, 1, E_ACCESSDENIED);
  testing::SelectionDataObject selection({kTabPaths[0]});
  const auto page = Ref<CSnapInPropertyPage>::Adopt(Make(tab().component));
  EXPECT_EQ(static_cast<IShellExtInit&>(*page).Initialize(&selection), S_OK);
  HeadlessDialog standing(bench_.Template(tab().dialog_template), *page);
  EXPECT_EQ(standing.Open(), E_ACCESSDENIED);
  ASSERT_EQ(bench_.messages.records().size(), 1U);
  EXPECT_EQ(bench_.messages.records()[0].message.text,
            "Unable to get connection with the ldap user.\r\n\r\nError code: 0X80070005");
  for (const HeadlessControl& control : standing.controls()) {
    const std::string shown = control.IsEdit() ? control.text : "";
    EXPECT_EQ(shown, "") << control.item.id;
  }
}

TEST_P(ObjectTabTest, ACommitThatFailsOnTheSecondOfThreeLeavesTheThird) {
  OpenOn({Full(), Full(), Full()});
  bench_.faulty.plan().Fail(FaultPoint::kSetInfo, 2, E_ACCESSDENIED);
  EXPECT_FALSE(page().Apply());
  EXPECT_EQ(bench_.directory.Log(testing::DirectoryCall::Kind::kSetInfo),
            Lines{"SetInfo " + kTabPaths[0]});
  ASSERT_EQ(bench_.messages.records().size(), 1U);
  EXPECT_EQ(bench_.messages.records()[0].message.text,
            "Unknown error occured\r\n\r\nError code: 0X80070005");
}

TEST_P(ObjectTabTest, LeavingItValidatesNothing) {
  OpenOn({{{"peloraAccount", Variant::Integer(1)}}});
  using enum PageNotification;
  for (const PageNotification notification :
       {kSetActive, kKillActive, kReset, kWizardBack, kWizardNext, kWizardFinish, kQueryCancel}) {
    EXPECT_EQ(page().page().OnPageNotification(notification), 0);
  }
  EXPECT_TRUE(bench_.messages.records().empty());
  EXPECT_TRUE(bench_.directory.calls().empty());
}

}  // namespace
}  // namespace pelora
