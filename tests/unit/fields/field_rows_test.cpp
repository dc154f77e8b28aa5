// SPDX-License-Identifier: Apache-2.0
// What the tabs tell of their fields.
#include "platform/field_rows.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <map>
#include <set>

#include "pages/edited_fields.h"
#include "resources/resource.h"
#include "tests/unit/fields/row_checks.h"
#include "tests/unit/tab_bench.h"

namespace pelora {
namespace {

using resources::ControlKind;
using resources::DialogTemplate;
using ::testing::ElementsAre;
using testing::FakeAttributes;
using testing::FindItem;
using ::testing::IsEmpty;
using testing::IsPushButton;
using testing::Lines;
using testing::RowNamed;
using testing::ToLine;

/// The tabs of the module with their fields, in the order of loading.
const std::map<std::string, Lines, std::less<>> kTabs = {
    {"CPropPageUser",
     {R"(mail: default "E-mail addresses" mail otherMailbox)",
      R"(otherMailbox: list "E-mail addresses" otherMailbox mail)",
      R"(peloraSendAsPrivilege: names "Send as")", R"(peloraQuotaOverride: flag "Use user quota")",
      R"(peloraQuotaWarn: number "Warning at")", R"(peloraQuotaSoft: number "Soft limit")",
      R"(peloraQuotaHard: number "Hard limit")", R"(peloraAccount: flag "Pelora Account")",
      R"(peloraHidden: flag "Hide from addressbook")", R"(peloraUserServer: server "Home Server")",
      R"(accountType: choice "Account type" peloraAdmin peloraSharedStoreOnly peloraResourceType)",
      R"(peloraResourceCapacity: number "Capacity")"}},
    {"CPropPageFeatures",
     {R"(peloraUserArchiveServers: list "archiver")",
      R"(feature.imap: choice "imap" peloraEnabledFeatures peloraDisabledFeatures)",
      R"(feature.pop3: choice "pop3" peloraEnabledFeatures peloraDisabledFeatures)"}},
    {"CPropPageContact",
     {R"(mail: default "E-mail addresses" mail otherMailbox)",
      R"(otherMailbox: list "E-mail addresses" otherMailbox mail)",
      R"(peloraSendAsPrivilege: names "Send as")", R"(peloraAccount: flag "Pelora Contact")",
      R"(peloraHidden: flag "Hide from addressbook")"}},
    {"CPropPageDistlist",
     {R"(mail: default "E-mail addresses" mail otherMailbox)",
      R"(otherMailbox: list "E-mail addresses" otherMailbox mail)",
      R"(peloraSendAsPrivilege: names "Send as")", R"(peloraAccount: flag "Enable Pelora group")",
      R"(peloraHidden: flag "Hide from addressbook")"}},
    {"CPropPageDynamicDistlist",
     {R"(peloraBase: name "Search base")", R"(peloraFilter: text "Search query")",
      R"(mail: default "E-mail addresses" mail otherMailbox)",
      R"(otherMailbox: list "E-mail addresses" otherMailbox mail)",
      R"(peloraAccount: flag "Pelora Dynamic Distribution list")",
      R"(peloraHidden: flag "Hide from addressbook")"}},
    {"CPropPageDynamicDistlistGeneral",
     {R"(name: shown text "Name")", R"(description: text "Description")"}},
    {"CPropPageAddresslist",
     {R"(peloraAccount: flag "Pelora Addresslist")",
      R"(peloraHidden: flag "Hide from addressbook")", R"(peloraBase: name "Search base")",
      R"(peloraFilter: text "Search query")"}},
    {"CPropPageAddresslistGeneral",
     {R"(name: shown text "Name")", R"(description: text "Description")"}},
    {"CPropPageCompany",
     {R"(peloraAccount: flag "Pelora Company")", R"(peloraHidden: flag "Hide from addressbook")",
      R"(peloraSystemAdmin: name "Sysadmin")", R"(peloraCompanyServer: server "Home server")"}},
    {"CPropPageCompanyQuota",
     {R"(peloraQuotaOverride: flag "Use company quota")", R"(peloraQuotaWarn: number "Warning at")",
      R"(peloraQuotaCompanyWarningRecipients: names "Quota warning recipients")",
      R"(peloraUserDefaultQuotaOverride: flag "Use user quota")",
      R"(peloraUserDefaultQuotaWarn: number "Warning at")",
      R"(peloraUserDefaultQuotaSoft: number "Soft limit")",
      R"(peloraUserDefaultQuotaHard: number "Hard Limit")",
      R"(peloraQuotaUserWarningRecipients: names "Quota user warning recipients")"}},
    {"CPropPageCompanyRights",
     {R"(peloraViewPrivilege: names "Remote view")",
      R"(peloraAdminPrivilege: names "Remote administrators")"}},
    {"CPropPageServer",
     {R"(peloraAccount: flag "Enable Pelora Server")", R"(peloraHostAddress: text "Address")",
      R"(peloraHttpPort: number "HTTP port")", R"(peloraSslPort: number "SSL port")",
      R"(peloraFilePath: text "File path")",
      R"(peloraContainsPublic: flag "Contains public store")"}},
};

class FieldRowsTest : public testing::TabTest {
 protected:
  /// The rows of a component, asked for as a host asks.
  [[nodiscard]] std::vector<FieldRow> RowsOf(std::string_view component) {
    IUnknown* const made = FindClass(component)->create(bench_.platform);
    const auto tab = Ref<IUnknown>::Adopt(made);
    const Ref<IFieldRows> rows = Query<IFieldRows>(*tab);
    EXPECT_TRUE(rows) << component;
    return rows ? rows->Fields() : std::vector<FieldRow>{};
  }
  /// Opens a tab on one object, which is whatever the tab wants it to be.
  void OpenOn(std::string_view component, const FakeAttributes& attributes) {
    const std::string path = testing::kTabPaths.front();
    bench_.directory.AddObject(path, attributes, {IID_IADsUser});
    page_.reset();
    CSnapInPropertyPage* const tab = Make(component);
    page_.emplace(bench_, tab, bench_.Template(tab->dialog_template()), Lines{path});
  }
  [[nodiscard]] Ref<IADs> Object() {
    Ref<IADs> object;
    EXPECT_EQ(bench_.platform.directory.ADsGetObject(testing::kTabPaths.front(), IID_IADs, object),
              S_OK);
    return object;
  }
  /// The attributes that were read since the calls were cleared, in order.
  [[nodiscard]] Lines Read() const {
    Lines read;
    for (const testing::DirectoryCall& call : bench_.directory.calls()) {
      if (call.kind == testing::DirectoryCall::Kind::kGet) read.push_back(call.name);
    }
    return read;
  }
  /// The attributes that a tab reads while its dialog is made, in order.
  [[nodiscard]] Lines ReadByOpening(std::string_view component) {
    const std::string path = testing::kTabPaths.front();
    bench_.directory.AddObject(path, {}, {IID_IADsUser});
    const auto tab = Ref<CSnapInPropertyPage>::Adopt(Make(component));
    HeadlessDialog dialog(bench_.Template(tab->dialog_template()), *tab);
    testing::SelectionDataObject selection({path});
    IShellExtInit& extension = *tab;
    EXPECT_EQ(extension.Initialize(&selection), S_OK);
    bench_.directory.ClearCalls();
    EXPECT_EQ(dialog.Open(), S_OK);
    return Read();
  }
  [[nodiscard]] DialogTemplate TemplateOf(std::string_view component) {
    const auto tab = Ref<CSnapInPropertyPage>::Adopt(Make(component));
    return bench_.Template(tab->dialog_template());
  }
};

TEST_F(FieldRowsTest, EveryTabTellsItsFieldsInTheOrderOfLoading) {
  std::size_t tabs = 0;
  for (const ComponentClass& component : ClassTable()) {
    if (component.kind != ComponentKind::kPropertyPage) continue;
    ++tabs;
    const DialogTemplate dialog = TemplateOf(component.name);
    Lines lines;
    for (const FieldRow& row : RowsOf(component.name)) lines.push_back(ToLine(row, dialog));
    ASSERT_TRUE(kTabs.contains(component.name)) << component.name;
    EXPECT_EQ(lines, kTabs.find(component.name)->second) << component.name;
  }
  EXPECT_EQ(tabs, kTabs.size());
}

TEST_F(FieldRowsTest, EveryControlOfARowIsInTheTemplateAndOfItsKind) {
  for (const auto& [component, lines] : kTabs) {
    testing::ExpectControlsOf(RowsOf(component), TemplateOf(component), component);
  }
}

TEST_F(FieldRowsTest, EveryControlThatHoldsAValueBelongsToARow) {
  for (const auto& [component, lines] : kTabs) {
    EXPECT_THAT(testing::ValuesWithoutRow(RowsOf(component), TemplateOf(component)), IsEmpty())
        << component;
  }
}

TEST_F(FieldRowsTest, TheDialogInWhichTextsAreTypedHasTheControlsThatTheRowNames) {
  std::size_t dialogs = 0;
  for (const auto& [component, lines] : kTabs) {
    for (const FieldRow& row : RowsOf(component)) {
      const TextDialog& typed_in = row.typed_in;
      if (typed_in.dialog == 0) {
        EXPECT_NE(row.kind, FieldKind::kList) << row.name;
        continue;
      }
      ++dialogs;
      const DialogTemplate dialog = bench_.Template(typed_in.dialog);
      ASSERT_NE(FindItem(dialog, typed_in.text), nullptr) << row.name;
      EXPECT_EQ(FindItem(dialog, typed_in.text)->kind, ControlKind::kEdit);
      if (typed_in.list == 0) continue;
      ASSERT_NE(FindItem(dialog, typed_in.list), nullptr) << row.name;
      EXPECT_EQ(FindItem(dialog, typed_in.list)->kind, ControlKind::kListBox);
      for (const ControlId button : {typed_in.add, typed_in.remove}) {
        ASSERT_NE(FindItem(dialog, button), nullptr) << row.name;
        EXPECT_TRUE(IsPushButton(*FindItem(dialog, button)));
      }
    }
  }
  EXPECT_GT(dialogs, 0U);
}

TEST_F(FieldRowsTest, EveryAttributeOfTheCatalogueIsReached) {
  std::set<std::string_view> reached;
  for (const auto& [component, lines] : kTabs) {
    for (const FieldRow& row : RowsOf(component)) {
      for (const std::string_view attribute : row.attributes) reached.insert(attribute);
    }
  }
  // Read from what is chosen, and a field of nothing.
  reached.insert("distinguishedName");
  for (const Attribute& attribute : kAttributeCatalogue) {
    EXPECT_TRUE(reached.contains(attribute.name)) << attribute.name;
  }
  EXPECT_EQ(reached.size(), kAttributeCatalogue.size()) << "and no other";
}

TEST_F(FieldRowsTest, NoTwoRowsOfATabHaveOneNameOrTakeTheirValueFromOneAttribute) {
  for (const auto& [component, lines] : kTabs) {
    std::set<std::string> names;
    std::set<std::string_view> sources;
    for (const FieldRow& row : RowsOf(component)) {
      EXPECT_TRUE(names.insert(row.name).second) << component << " " << row.name;
      ASSERT_FALSE(row.attributes.empty()) << row.name;
      // The features share two lists.
      if (row.name.starts_with("feature.")) continue;
      EXPECT_TRUE(sources.insert(row.attributes.front()).second) << component << " " << row.name;
    }
  }
}

TEST_F(FieldRowsTest, TheOrderOfTheRowsIsTheOrderInWhichTheirAttributesAreRead) {
  for (const auto& [component, lines] : kTabs) {
    const Lines read = ReadByOpening(component);
    auto last = read.begin();
    for (const FieldRow& row : RowsOf(component)) {
      const auto at = std::ranges::find(read, row.attributes.front());
      ASSERT_NE(at, read.end()) << component << " " << row.name;
      EXPECT_GE(at, last) << component << " " << row.name;
      last = at;
    }
  }
}

/// Edits the control of a row, where it can be edited by itself. Whether it was.
bool Edit(HeadlessDialog& dialog, HeadlessUser& user, const FieldRow& row) {
  if (row.is_read_only) return false;
  switch (row.kind) {
    case FieldKind::kFlag:
      return user.Click(row.control) == UserAnswer::kDone;
    case FieldKind::kNumber:
    case FieldKind::kText:
    case FieldKind::kName:
    case FieldKind::kServer:
      dialog.SetText(row.control, "7");
      return true;
    default:
      return false;
  }
}

TEST_F(FieldRowsTest, WhatATabWritesIsWhatItsRowsSay) {
  std::size_t edits = 0;
  for (const auto& [component, lines] : kTabs) {
    if (component == "CPropPageFeatures") continue;
    // The account box is unchecked by its click, and nothing is validated.
    OpenOn(component, {{"peloraAccount", Variant::Integer(1)}});
    std::set<std::string> told;
    std::set<std::string> edited;
    for (const FieldRow& row : RowsOf(component)) {
      told.insert(row.attributes.begin(), row.attributes.end());
      if (Edit(dialog(), page().user(), row)) edited.insert(row.name);
    }
    bench_.directory.ClearCalls();
    EXPECT_TRUE(page().Apply()) << component;
    std::set<std::string> written;
    for (const testing::DirectoryCall& call : bench_.directory.calls()) {
      using enum testing::DirectoryCall::Kind;
      if (call.kind == kPut || call.kind == kPutEx) written.insert(call.name);
    }
    edits += edited.size();
    // Of users the resource type and the capacity are written whatever was edited.
    if (component == "CPropPageUser") {
      edited.insert("peloraResourceType");
      EXPECT_EQ(written.erase("peloraResourceCapacity") + edited.erase("peloraResourceCapacity"),
                1U)
          << "an edited capacity of who is no resource is not written";
    }
    EXPECT_EQ(written, edited) << component;
    EXPECT_TRUE(std::ranges::includes(told, written)) << component;
  }
  EXPECT_GT(edits, 30U);
}

TEST_F(FieldRowsTest, WhatCannotBeDoneWithoutIsSaidInItsRow) {
  std::map<std::string, std::string> missing;
  for (const auto& [component, lines] : kTabs) {
    for (const FieldRow& row : RowsOf(component)) {
      if (!row.missing.empty()) missing[row.name] = row.missing;
    }
  }
  const std::map<std::string, std::string> expected = {
      {"peloraFilter", "Missing Search Query"},
      {"peloraHostAddress", "Missing Server Address"},
      {"peloraHttpPort", "Missing HTTP/SSL Port"},
      {"peloraFilePath", "Missing File Path"}};
  EXPECT_EQ(missing, expected);
}

TEST_F(FieldRowsTest, TheChoiceOfAnAccountTypeIsTheRowThatTheTabSelects) {
  const FieldRow row = RowNamed(RowsOf("CPropPageUser"), "accountType");
  ASSERT_TRUE(row.choice_of);
  EXPECT_THAT(row.choices, ElementsAre("active user", "shared store only", "room", "equipment",
                                       "administrator", "system administrator"));
  std::set<std::optional<std::size_t>> seen;
  for (const char* const resource : {"", "ROOM", "equipment", "chair"}) {
    for (const std::int32_t shared : {0, 1}) {
      for (const std::int32_t admin : {0, 1, 2, 3, -1}) {
        OpenOn("CPropPageUser", {{"peloraResourceType", Variant::String(resource)},
                                 {"peloraSharedStoreOnly", Variant::Integer(shared)},
                                 {"peloraAdmin", Variant::Integer(admin)}});
        const auto selected = dialog().ComboBox(IDC_ACCOUNT_TYPE).Selection();
        EXPECT_EQ(row.choice_of(*Object()), selected);
        seen.insert(selected);
      }
    }
  }
  EXPECT_EQ(seen.size(), 7U) << "each type, and none";
}

TEST_F(FieldRowsTest, TheChoiceOfAFeatureIsTheStateThatTheTabShows) {
  const FieldRow row = RowNamed(RowsOf("CPropPageFeatures"), "feature.pop3");
  ASSERT_TRUE(row.choice_of);
  EXPECT_EQ(row.entry, "pop3");
  EXPECT_THAT(row.choices, ElementsAre("unset", "enabled", "disabled", "ambiguous"));
  EXPECT_THAT(row.choice_buttons, ElementsAre(0, IDC_FEATURE_ENABLE, IDC_FEATURE_DISABLE, 0));
  const Lines shown = {"Unset", "Enabled", "Disabled", "Ambiguous"};
  for (std::size_t state = 0; state < shown.size(); ++state) {
    FakeAttributes attributes = {{"peloraEnabledFeatures", Variant::String("imap")}};
    if ((state & 1U) != 0) attributes["peloraEnabledFeatures"] = Variant::String("pop3");
    if ((state & 2U) != 0) attributes["peloraDisabledFeatures"] = Variant::String("pop3");
    OpenOn("CPropPageFeatures", attributes);
    EXPECT_EQ(dialog().ListView(IDC_FEATURE_LIST).Text(2, 1), shown[state]);
    EXPECT_EQ(row.choice_of(*Object()), state);
  }
  bench_.faulty.plan().FailAttribute(testing::FaultPoint::kGet, "peloraDisabledFeatures", 1,
                                     E_FAIL);
  EXPECT_EQ(row.choice_of(*Object()), std::nullopt) << "what cannot be read has no state";
}

// A field that is added to a page.

constexpr std::array kAddedFields = {
    EditedFields::Field{.control = IDC_SYSTEM_ADMIN, .attribute = CatalogueEntry("description")},
    EditedFields::Field{.control = IDC_PELORA_HIDDEN,
                        .attribute = CatalogueEntry("peloraContainsPublic")}};

class PageWithAddedFields final : public CSnapInPropertyPage {
 public:
  explicit PageWithAddedFields(const Platform& platform)
      : CSnapInPropertyPage(platform, IID_IADs, {}, IDD_PROPPAGE_COMPANY, "Added"),
        fields_(*this, kAddedFields) {
    Add(fields_);
  }

 private:
  ~PageWithAddedFields() override = default;

  EditedFields fields_;
};

TEST_F(FieldRowsTest, AFieldIsOneRowToBeSeenLoadedEditedAndWritten) {
  const std::string path = testing::kTabPaths.front();
  bench_.directory.AddObject(path, {{"description", Variant::String("Old")},
                                    {"peloraContainsPublic", Variant::Integer(1)}});
  auto* const tab = new PageWithAddedFields(bench_.platform);
  page_.emplace(bench_, tab, bench_.Template(IDD_PROPPAGE_COMPANY), Lines{path});
  const DialogTemplate dialog_template = bench_.Template(IDD_PROPPAGE_COMPANY);
  Lines rows;
  for (const FieldRow& row : tab->Fields()) rows.push_back(ToLine(row, dialog_template));
  EXPECT_THAT(rows, ElementsAre(R"(description: text "Sysadmin")",
                                R"(peloraContainsPublic: flag "Hide from addressbook")"));
  EXPECT_EQ(Text(IDC_SYSTEM_ADMIN), "Old");
  EXPECT_EQ(dialog().Check(IDC_PELORA_HIDDEN), CheckState::kChecked);
  EXPECT_THAT(Applied(), IsEmpty());
  dialog().SetText(IDC_SYSTEM_ADMIN, "New");
  page().Click(IDC_PELORA_HIDDEN);
  EXPECT_TRUE(page().IsModified());
  EXPECT_THAT(Applied(), ElementsAre(R"(description "New")", "peloraContainsPublic 0"));
  EXPECT_THAT(Applied(), IsEmpty()) << "once";
}

TEST_F(FieldRowsTest, TheRowsAreAnInterfaceOfTheSameComponent) {
  const auto tab = Ref<IUnknown>::Adopt(FindClass("CPropPageContact")->create(bench_.platform));
  Ref<IFieldRows> rows = Query<IFieldRows>(*tab);
  ASSERT_TRUE(rows);
  EXPECT_EQ(tab->AddRef(), 3U) << "one reference more";
  EXPECT_EQ(tab->Release(), 2U);
  EXPECT_EQ(Query<IUnknown>(*rows).Get(), Query<IUnknown>(*tab).Get());
  EXPECT_TRUE(Query<IShellPropSheetExt>(*rows));
}

}  // namespace
}  // namespace pelora
