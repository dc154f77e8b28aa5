// SPDX-License-Identifier: Apache-2.0
// The three tabs of companies.
#include "resources/resource.h"
#include "tests/unit/tab_bench.h"

namespace pelora {
namespace {

using enum ControlNotification;
using testing::FakeAttributes;
using testing::FakeChoosers;
using testing::kTabPaths;
using testing::Lines;

// The first tab.

const FakeAttributes kCompany = {{"peloraAccount", Variant::Integer(1)},
                                 {"peloraSystemAdmin", Variant::String("CN=Ada,DC=x")},
                                 {"peloraCompanyServer", Variant::String("node1")}};

class CompanyTabTest : public testing::TabTest {
 protected:
  void OpenOn(const std::vector<FakeAttributes>& companies) { Open("CPropPageCompany", companies); }
};

TEST_F(CompanyTabTest, ShowsACompany) {
  OpenOn({kCompany});
  EXPECT_EQ(dialog().Check(IDC_PELORA_ACCOUNT), CheckState::kChecked);
  EXPECT_EQ(dialog().Check(IDC_PELORA_HIDDEN), CheckState::kUnchecked);
  EXPECT_EQ(Text(IDC_SYSTEM_ADMIN), "CN=Ada,DC=x");
  EXPECT_EQ(Text(IDC_SERVER), "node1");
}

TEST_F(CompanyTabTest, NeitherNameCanBeTyped) {
  OpenOn({kCompany});
  EXPECT_EQ(page().user().TypeText(IDC_SYSTEM_ADMIN, "x"), UserAnswer::kReadOnly);
  EXPECT_EQ(page().user().EraseText(IDC_SERVER), UserAnswer::kReadOnly);
}

TEST_F(CompanyTabTest, TheSystemAdministratorIsChosenFromTheUsers) {
  OpenOn({kCompany});
  Choose({"CN=Bob,DC=x"});
  page().Click(IDC_SYSTEM_ADMIN_SELECT);
  ASSERT_EQ(bench_.choosers.pickers().size(), 1U);
  const FakeChoosers::PickerRun& run = bench_.choosers.pickers()[0];
  EXPECT_EQ(run.init.scope.flags, 0x45U) << "users";
  EXPECT_EQ(run.init.options, 0x2U) << "one only";
  EXPECT_EQ(run.owner, &dialog());
  EXPECT_EQ(Text(IDC_SYSTEM_ADMIN), "CN=Bob,DC=x");
  EXPECT_TRUE(page().IsModified());
  EXPECT_EQ(Applied(), Lines{R"(peloraSystemAdmin "CN=Bob,DC=x")"});
  EXPECT_EQ(Applied(), Lines{}) << "only once";
}

TEST_F(CompanyTabTest, TheSameSystemAdministratorChosenAgainIsWritten) {
  OpenOn({kCompany});
  Choose({"CN=Ada,DC=x"});
  page().Click(IDC_SYSTEM_ADMIN_SELECT);
  EXPECT_TRUE(page().IsModified());
  EXPECT_EQ(Applied(), Lines{R"(peloraSystemAdmin "CN=Ada,DC=x")"});
}

TEST_F(CompanyTabTest, TheHomeServerIsChosenFromTheComputers) {
  OpenOn({kCompany});
  Choose({"CN=node2,OU=Servers,DC=x"});
  page().Click(IDC_SERVER_SELECT);
  EXPECT_EQ(bench_.choosers.pickers().at(0).init.scope.types, 0x6U) << "computers";
  EXPECT_EQ(bench_.choosers.pickers()[0].init.options, 0x2U) << "one only";
  EXPECT_EQ(Text(IDC_SERVER), "node2");
  EXPECT_TRUE(page().IsModified());
  EXPECT_EQ(Applied(), Lines{R"(peloraCompanyServer "node2")"});
}

TEST_F(CompanyTabTest, ACancelledOrFailedChoiceChangesNothing) {
  OpenOn({kCompany});
  for (const ControlId button : {227U, 271U}) {
    page().Click(button);
    bench_.choosers.Choose({"LDAP://CN=Nobody,DC=x"});
    page().Click(button);
  }
  EXPECT_EQ(bench_.choosers.pickers().size(), 4U);
  EXPECT_EQ(Text(IDC_SYSTEM_ADMIN), "CN=Ada,DC=x");
  EXPECT_EQ(Text(IDC_SERVER), "node1");
  EXPECT_FALSE(page().IsModified());
  EXPECT_EQ(Applied(), Lines{});
}

TEST_F(CompanyTabTest, WritesAccountThenAdministratorThenServer) {
  OpenOn({{}});
  Choose({"CN=node2,DC=x"});
  page().Click(IDC_SERVER_SELECT);
  Choose({"CN=Bob,DC=x"});
  page().Click(IDC_SYSTEM_ADMIN_SELECT);
  page().Click(IDC_PELORA_HIDDEN);
  page().Click(IDC_PELORA_ACCOUNT);
  EXPECT_EQ(Applied(),
            (Lines{"peloraAccount 1", "peloraHidden 1", R"(peloraSystemAdmin "CN=Bob,DC=x")",
                   R"(peloraCompanyServer "node2")"}));
}

TEST_F(CompanyTabTest, ATextThatAProgramEmptiesIsCleared) {
  OpenOn({kCompany});
  dialog().SetText(IDC_SYSTEM_ADMIN, "");
  dialog().SetText(IDC_SERVER, "");
  EXPECT_EQ(Applied(), (Lines{"peloraSystemAdmin cleared", "peloraCompanyServer cleared"}));
}

TEST_F(CompanyTabTest, SeveralThatDifferShowEmptyFieldsAndTakeOneChoice) {
  OpenOn({kCompany, {}, {}});
  EXPECT_EQ(dialog().Check(IDC_PELORA_ACCOUNT), CheckState::kIndeterminate);
  EXPECT_EQ(Text(IDC_SYSTEM_ADMIN), "");
  EXPECT_EQ(Text(IDC_SERVER), "");
  Choose({"CN=Bob,DC=x"});
  page().Click(IDC_SYSTEM_ADMIN_SELECT);
  const Lines written = {R"(peloraSystemAdmin "CN=Bob,DC=x")"};
  EXPECT_EQ(Applied(), written);
  EXPECT_EQ(Staged(1), written);
  EXPECT_EQ(Staged(2), written);
}

TEST_F(CompanyTabTest, LeavesAddressesAndDelegatesAlone) {
  FakeAttributes company = kCompany;
  company["mail"] = Variant::String("one@x");
  company["otherMailbox"] = Variant::String("one@y");
  company["peloraSendAsPrivilege"] = Variant::String("CN=Bob,DC=x");
  OpenOn({company});
  page().Click(IDC_PELORA_HIDDEN);
  EXPECT_EQ(Applied(), Lines{"peloraHidden 1"});
  EXPECT_EQ(bench_.directory.CountOf(testing::DirectoryCall::Kind::kGet), 0U);
}

// The quota tab.

const FakeAttributes kQuotas = {
    {"peloraQuotaOverride", Variant::Integer(1)},
    {"peloraQuotaWarn", Variant::Integer(10)},
    {"peloraQuotaSoft", Variant::Integer(20)},
    {"peloraQuotaHard", Variant::Integer(30)},
    {"peloraUserDefaultQuotaOverride", Variant::Integer(1)},
    {"peloraUserDefaultQuotaWarn", Variant::Integer(1)},
    {"peloraUserDefaultQuotaSoft", Variant::Integer(2)},
    {"peloraUserDefaultQuotaHard", Variant::Integer(3)},
    {"peloraQuotaCompanyWarningRecipients", Variant::String("CN=Ada,DC=x")},
    {"peloraQuotaUserWarningRecipients", Variant::StringArray({"CN=Ada,DC=x", "CN=Bob,DC=x"})}};

class CompanyQuotaTabTest : public testing::TabTest {
 protected:
  void OpenOn(const std::vector<FakeAttributes>& companies) {
    Open("CPropPageCompanyQuota", companies);
  }
};

TEST_F(CompanyQuotaTabTest, ShowsBothQuotasAndBothLists) {
  OpenOn({kQuotas});
  EXPECT_EQ(Text(IDC_QUOTA_WARN), "10");
  EXPECT_EQ(Text(IDC_USER_QUOTA_WARN), "1");
  EXPECT_EQ(Text(IDC_USER_QUOTA_SOFT), "2");
  EXPECT_EQ(Text(IDC_USER_QUOTA_HARD), "3");
  EXPECT_EQ(page().Rows(IDC_QUOTA_RECIPIENTS), Lines{"CN=Ada,DC=x"});
  EXPECT_EQ(page().Rows(IDC_USER_QUOTA_RECIPIENTS), (Lines{"CN=Ada,DC=x", "CN=Bob,DC=x"}));
}

TEST_F(CompanyQuotaTabTest, EachBoxEnablesItsOwnFields) {
  OpenOn({{}});
  const auto enabled = [this] {
    Lines fields;
    for (const ControlId id : {203U, 220U, 222U, 223U}) {
      if (dialog().IsEnabled(id)) fields.push_back(std::to_string(id));
    }
    return fields;
  };
  EXPECT_EQ(enabled(), Lines{});
  page().Click(IDC_QUOTA_OVERRIDE);
  EXPECT_EQ(enabled(), Lines{"203"});
  page().Click(IDC_USER_QUOTA_OVERRIDE);
  page().Click(IDC_QUOTA_OVERRIDE);
  EXPECT_EQ(enabled(), (Lines{"220", "222", "223"}));
}

TEST_F(CompanyQuotaTabTest, WritesTheCompanysQuotaThenTheUsers) {
  OpenOn({kQuotas});
  page().Type(IDC_USER_QUOTA_HARD, "33");
  page().Type(IDC_USER_QUOTA_SOFT, "22");
  page().Type(IDC_USER_QUOTA_WARN, "11");
  page().Type(IDC_QUOTA_WARN, "100");
  page().Click(IDC_USER_QUOTA_OVERRIDE);
  page().Click(IDC_QUOTA_OVERRIDE);
  page().SelectRow(IDC_USER_QUOTA_RECIPIENTS, "CN=Ada,DC=x");
  page().Click(IDC_USER_QUOTA_RECIPIENTS_DELETE);
  Choose({"CN=Carl,DC=x", "CN=Dora,DC=x"});
  page().Click(IDC_QUOTA_RECIPIENTS_ADD);
  EXPECT_EQ(Applied(),
            (Lines{"peloraQuotaWarn 100", "peloraQuotaOverride 0",
                   R"(peloraQuotaCompanyWarningRecipients ["CN=Ada,DC=x", "CN=Carl,DC=x", )"
                   R"("CN=Dora,DC=x"])",
                   "peloraUserDefaultQuotaWarn 11", "peloraUserDefaultQuotaSoft 22",
                   "peloraUserDefaultQuotaHard 33", "peloraUserDefaultQuotaOverride 0",
                   R"(peloraQuotaUserWarningRecipients ["CN=Bob,DC=x"])"}));
}

TEST_F(CompanyQuotaTabTest, LeavesTheLimitsItDoesNotShowAlone) {
  OpenOn({kQuotas});
  for (const ControlId missing : {204U, 205U}) {
    dialog().SetText(missing, "77");
    EXPECT_EQ(Text(missing), "");
  }
  page().Type(IDC_QUOTA_WARN, "11");
  EXPECT_EQ(Applied(), Lines{"peloraQuotaWarn 11"});
  EXPECT_EQ(bench_.directory.Value(kTabPaths[0], "peloraQuotaHard"), Variant::Integer(30));
}

TEST_F(CompanyQuotaTabTest, RecipientsAreUsersAndNothingIsChosenByCancelling) {
  OpenOn({kQuotas});
  for (const ControlId button : {224U, 232U}) page().Click(button);
  ASSERT_EQ(bench_.choosers.pickers().size(), 2U);
  for (const FakeChoosers::PickerRun& run : bench_.choosers.pickers()) {
    EXPECT_EQ(run.init.scope.flags, 0x45U) << "users";
    EXPECT_EQ(run.init.options, 0x3U) << "several";
  }
  EXPECT_FALSE(page().IsModified());
}

TEST_F(CompanyQuotaTabTest, DeletingFollowsTheSelectionOfItsOwnList) {
  OpenOn({kQuotas});
  (void)Command(IDC_QUOTA_RECIPIENTS, kSelectionChange);
  (void)Command(IDC_USER_QUOTA_RECIPIENTS, kSelectionChange);
  EXPECT_FALSE(dialog().IsEnabled(IDC_QUOTA_RECIPIENTS_DELETE));
  EXPECT_FALSE(dialog().IsEnabled(IDC_USER_QUOTA_RECIPIENTS_DELETE));
  page().SelectRow(IDC_QUOTA_RECIPIENTS, "CN=Ada,DC=x");
  EXPECT_TRUE(dialog().IsEnabled(IDC_QUOTA_RECIPIENTS_DELETE));
  EXPECT_FALSE(dialog().IsEnabled(IDC_USER_QUOTA_RECIPIENTS_DELETE));
  page().Click(IDC_QUOTA_RECIPIENTS_DELETE);
  EXPECT_FALSE(dialog().IsEnabled(IDC_QUOTA_RECIPIENTS_DELETE)) << "the list is empty";
  EXPECT_EQ(Applied(), Lines{"peloraQuotaCompanyWarningRecipients []"});
}

TEST_F(CompanyQuotaTabTest, SeveralTakeLimitsAndNoRecipients) {
  OpenOn({kQuotas, kQuotas, kQuotas});
  EXPECT_EQ(page().Rows(IDC_QUOTA_RECIPIENTS), Lines{});
  Choose({"CN=Carl,DC=x"});
  (void)Command(IDC_QUOTA_RECIPIENTS_ADD, kClicked);
  page().Type(IDC_QUOTA_WARN, "5");
  EXPECT_EQ(Applied(), Lines{"peloraQuotaWarn 5"});
  EXPECT_EQ(Staged(2), Lines{"peloraQuotaWarn 5"});
}

// The rights tab.

/// One of the two lists.
struct Rights {
  const char* name;
  ControlId list;
  ControlId add;
  ControlId remove;
  const char* attribute;
};

void PrintTo(const Rights& rights, std::ostream* out) { *out << rights.name; }

class CompanyRightsTabTest : public testing::TabTest, public ::testing::WithParamInterface<Rights> {
 protected:
  void OpenOn(const std::vector<FakeAttributes>& companies) {
    Open("CPropPageCompanyRights", companies);
  }
  [[nodiscard]] static FakeAttributes Holding(const Lines& names) {
    return {{GetParam().attribute, Variant::StringArray(names)}};
  }
  [[nodiscard]] Lines Rows() { return page().Rows(GetParam().list); }
  /// Has the chooser of the list give names.
  void ChooseFor(const Lines& names) {
    if (GetParam().list == 221) return Choose(names);
    Lines paths;
    for (const std::string& name : names) paths.push_back("LDAP://dc1/" + name);
    bench_.choosers.Find(testing::ChosenObjects::AsObjectNames(paths));
  }
  [[nodiscard]] static std::string Line(const std::string& values) {
    return std::string(GetParam().attribute) + " " + values;
  }
};

INSTANTIATE_TEST_SUITE_P(BothLists, CompanyRightsTabTest,
                         ::testing::Values(Rights{"Viewers", 219, 231, 228, "peloraViewPrivilege"},
                                           Rights{"Administrators", 221, 226, 230,
                                                  "peloraAdminPrivilege"}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(CompanyRightsTabTest, ShowsNamesWithoutThoseOfDeletedObjects) {
  OpenOn({Holding({"OU=B,DC=x", "CN=Gone\\0ADEL:1,CN=Deleted Objects,DC=x", "OU=A,DC=x"})});
  EXPECT_EQ(Rows(), (Lines{"OU=A,DC=x", "OU=B,DC=x"}));
  EXPECT_FALSE(dialog().IsEnabled(GetParam().remove));
}

TEST_P(CompanyRightsTabTest, AddsWhatIsChosenInItsOrder) {
  OpenOn({Holding({"OU=M,DC=x", "OU=N,DC=x"})});
  ChooseFor({"OU=Z,DC=x", "OU=A,DC=x"});
  page().Click(GetParam().add);
  EXPECT_TRUE(page().IsModified());
  EXPECT_EQ(Rows(), (Lines{"OU=A,DC=x", "OU=M,DC=x", "OU=N,DC=x", "OU=Z,DC=x"}));
  EXPECT_EQ(Applied(), Lines{Line(R"(["OU=M,DC=x", "OU=N,DC=x", "OU=Z,DC=x", "OU=A,DC=x"])")});
}

TEST_P(CompanyRightsTabTest, ANameThatStandsThereAlreadyIsAddedAgain) {
  OpenOn({Holding({"OU=M,DC=x"})});
  ChooseFor({"OU=M,DC=x"});
  page().Click(GetParam().add);
  EXPECT_EQ(Rows(), (Lines{"OU=M,DC=x", "OU=M,DC=x"}));
}

TEST_P(CompanyRightsTabTest, ACancelledChoiceChangesNothing) {
  OpenOn({Holding({"OU=M,DC=x"})});
  page().Click(GetParam().add);
  EXPECT_EQ(bench_.choosers.pickers().size() + bench_.choosers.queries().size(), 1U);
  EXPECT_FALSE(page().IsModified());
  EXPECT_EQ(Applied(), Lines{});
}

TEST_P(CompanyRightsTabTest, DeletesTheSelectedNames) {
  OpenOn({Holding({"OU=A,DC=x", "OU=B,DC=x", "OU=C,DC=x"})});
  page().SelectRow(GetParam().list, "OU=B,DC=x");
  EXPECT_TRUE(dialog().IsEnabled(GetParam().remove));
  page().Click(GetParam().remove);
  EXPECT_TRUE(page().IsModified());
  EXPECT_EQ(page().List(GetParam().list).Selection(), RowIndex{1}) << "the row that took its place";
  page().Click(GetParam().remove);
  EXPECT_EQ(Rows(), Lines{"OU=A,DC=x"});
  EXPECT_EQ(Applied(), Lines{Line(R"(["OU=A,DC=x"])")});
}

TEST_P(CompanyRightsTabTest, TheLastNameGoneLeavesAnEmptyListAndNothingToDelete) {
  OpenOn({Holding({"OU=A,DC=x"})});
  page().SelectRow(GetParam().list, "OU=A,DC=x");
  page().Click(GetParam().remove);
  EXPECT_FALSE(dialog().IsEnabled(GetParam().remove));
  EXPECT_EQ(Applied(), Lines{Line("[]")});
}

TEST_P(CompanyRightsTabTest, SavingDropsTheNamesOfDeletedObjects) {
  OpenOn({Holding({"CN=Gone\\0ADEL:1,CN=Deleted Objects,DC=x", "OU=A,DC=x", "OU=B,DC=x"})});
  EXPECT_EQ(Applied(), Lines{}) << "untouched they stay";
  page().SelectRow(GetParam().list, "OU=A,DC=x");
  page().Click(GetParam().remove);
  EXPECT_EQ(Applied(), Lines{Line(R"(["OU=B,DC=x"])")});
}

TEST_P(CompanyRightsTabTest, OfSeveralNothingIsShownAndNothingWritten) {
  const FakeAttributes company = Holding({"OU=A,DC=x"});
  OpenOn({company, company, company});
  EXPECT_EQ(Rows(), Lines{});
  EXPECT_TRUE(dialog().IsShown(GetParam().add));
  ChooseFor({"OU=Z,DC=x"});
  page().Click(GetParam().add);
  EXPECT_TRUE(page().IsModified());
  EXPECT_EQ(Rows(), Lines{"OU=Z,DC=x"});
  EXPECT_EQ(Applied(), Lines{});
  EXPECT_EQ(Staged(2), Lines{});
}

class CompanyRightsOrderTest : public testing::TabTest {};

TEST_F(CompanyRightsOrderTest, ViewersAreWrittenBeforeAdministrators) {
  Open("CPropPageCompanyRights", {{}});
  Choose({"CN=Ada,DC=x"});
  page().Click(IDC_ADMIN_ADD);
  bench_.choosers.Find(testing::ChosenObjects::AsObjectNames({"LDAP://OU=Other,DC=x"}));
  page().Click(IDC_VIEW_ADD);
  EXPECT_EQ(Applied(), (Lines{R"(peloraViewPrivilege ["OU=Other,DC=x"])",
                              R"(peloraAdminPrivilege ["CN=Ada,DC=x"])"}));
}

TEST_F(CompanyRightsOrderTest, CompaniesAreFoundByAQueryAndAdministratorsPicked) {
  Open("CPropPageCompanyRights", {{}});
  page().Click(IDC_VIEW_ADD);
  page().Click(IDC_ADMIN_ADD);
  ASSERT_EQ(bench_.choosers.queries().size(), 1U);
  EXPECT_EQ(bench_.choosers.queries()[0].init.window_flags, 0x63U) << "several";
  ASSERT_EQ(bench_.choosers.pickers().size(), 1U);
  EXPECT_EQ(bench_.choosers.pickers()[0].init.scope.flags, 0x45U) << "users";
  EXPECT_EQ(bench_.choosers.pickers()[0].init.options, 0x3U) << "several";
}

}  // namespace
}  // namespace pelora
