// SPDX-License-Identifier: Apache-2.0
// What the pages of the wizards tell of their fields.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "directory/attribute_catalogue.h"
#include "resources/resource.h"
#include "server/class_table.h"
#include "tests/unit/fields/row_checks.h"
#include "tests/unit/wizards/wizard_bench.h"
#include "wizards/wizard_page.h"
#include "wizards/wizard_pages.h"

namespace pelora {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::OpenWizardPage;
using testing::PageBench;
using testing::ToLine;
using Lines = std::vector<std::string>;

/// The pages with their fields, in the order of writing; what may not be missing is said behind.
const std::map<std::string, Lines, std::less<>> kPages = {
    {"CWizardExtUser",
     {R"(peloraAccount: flag "Create Pelora Account")",
      R"(accountType: choice "Account type" peloraAdmin peloraSharedStoreOnly peloraResourceType)",
      R"(peloraResourceCapacity: number "Capacity")",
      R"(peloraHidden: flag "Hide from addressbook")", R"(peloraUserServer: server "Home Server")",
      R"(mail: text "E-mail Address")"}},
    {"CWizardExtContact",
     {R"(peloraAccount: flag "Create Pelora Contact")",
      R"(peloraHidden: flag "Hide from addressbook")",
      R"(mail: text "E-mail Address", or Missing Email Address)"}},
    {"CWizardExtDistlist",
     {R"(peloraAccount: flag "Create Pelora group")",
      R"(peloraHidden: flag "Hide from addressbook")", R"(mail: text "E-mail Address")"}},
    {"CWizardExtCompany",
     {R"(peloraAccount: flag "Create Pelora Company")",
      R"(peloraHidden: flag "Hide from addressbook")",
      R"(peloraSystemAdmin: name "System Administrator")",
      R"(peloraCompanyServer: server "Home Server")"}},
    {"CWizardExtServer",
     {R"(peloraAccount: flag "Create Pelora Server")",
      R"(peloraHostAddress: text "Address", or Missing Server Address)",
      R"(peloraHttpPort: number "HTTP port", or Missing HTTP/SSL Port)",
      R"(peloraSslPort: number "SSL port")",
      R"(peloraFilePath: text "File path", or Missing File Path)",
      R"(peloraContainsPublic: flag "Contains public store")"}},
    {"CWizardExtAddresslist",
     {R"(peloraAccount: flag "Create Pelora Addresslist")",
      R"(peloraHidden: flag "Hide from addressbook")", R"(peloraBase: name "Search base")",
      R"(peloraFilter: text "Search query", or Missing Search Query)"}},
    {"CWizardExtDynamicDistlist",
     {R"(peloraAccount: flag "Create Pelora Dynamic Distribution list")",
      R"(peloraHidden: flag "Hide from addressbook")", R"(mail: text "E-mail Address")",
      R"(peloraBase: name "Search base")",
      R"(peloraFilter: text "Search query", or Missing Search Query)"}},
    {"CWizardAddresslist", {R"(name: text "Pelora Addresslist name", or Missing Name)"}},
    {"CWizardDynamicDistlist",
     {R"(name: text "Pelora Dynamic Distributionlist name", or Missing Name)"}},
};

/// A wizard component as a host makes it, with its rows and its template.
class Made {
 public:
  Made(PageBench& bench, std::string_view name) {
    const auto component = Ref<IUnknown>::Adopt(FindClass(name)->create(bench.platform));
    const Ref<IFieldRows> fields = Query<IFieldRows>(*component);
    EXPECT_TRUE(fields) << name;
    if (fields) rows = fields->Fields();
    const Ref<IDsAdminNewObjExt> wizard = Query<IDsAdminNewObjExt>(*component);
    (void)wizard->AddPages([&](const std::unique_ptr<PropSheetPage>& page) {
      dialog = bench.Template(page->Template());
      return false;
    });
  }

  std::vector<FieldRow> rows;
  resources::DialogTemplate dialog;
};

TEST(WizardRows, EveryPageTellsItsFieldsInTheOrderOfWriting) {
  PageBench bench;
  std::size_t pages = 0;
  for (const ComponentClass& component : ClassTable()) {
    if (component.kind != ComponentKind::kWizardPage) continue;
    ++pages;
    const Made made(bench, component.name);
    Lines lines;
    for (const FieldRow& row : made.rows) {
      const std::string missing = row.missing.empty() ? "" : ", or " + std::string(row.missing);
      lines.push_back(ToLine(row, made.dialog) + missing);
    }
    ASSERT_TRUE(kPages.contains(component.name)) << component.name;
    EXPECT_EQ(lines, kPages.find(component.name)->second) << component.name;
  }
  EXPECT_EQ(pages, kPages.size());
}

TEST(WizardRows, EveryControlOfARowIsInTheTemplateAndEveryValueHasARow) {
  PageBench bench;
  for (const auto& [name, lines] : kPages) {
    const Made made(bench, name);
    testing::ExpectControlsOf(made.rows, made.dialog, name);
    EXPECT_THAT(testing::ValuesWithoutRow(made.rows, made.dialog), IsEmpty()) << name;
  }
}

TEST(WizardRows, WhatAPageWritesIsWhatItsRowsSay) {
  PageBench bench;
  for (const auto& [name, lines] : kPages) {
    // The fields are read from the dialog: the page is shown as a host shows it. It goes last, and
    // the component with it.
    std::unique_ptr<PropSheetPage> page;
    const auto component = Ref<IUnknown>::Adopt(FindClass(name)->create(bench.platform));
    auto* const wizard = dynamic_cast<CWizardBase*>(component.Get());
    ASSERT_NE(wizard, nullptr) << name;
    std::set<std::string_view> told;
    for (const FieldRow& row : Query<IFieldRows>(*component)->Fields()) {
      if (row.name == "name") continue;
      told.insert(row.attributes.begin(), row.attributes.end());
    }
    const Ref<IDsAdminNewObjExt> extension = Query<IDsAdminNewObjExt>(*component);
    ASSERT_EQ(extension->AddPages([&page](std::unique_ptr<PropSheetPage> added) {
      page = std::move(added);
      return true;
    }),
              S_OK);
    HeadlessDialog dialog(bench.Template(page->Template()), page->Controller());
    ASSERT_EQ(dialog.Open(), 0);
    ChangeList changes;
    ASSERT_EQ(wizard->CollectAll(changes), S_OK);
    std::set<std::string_view> written;
    for (const AttributeChange& change : changes) written.insert(change.name);
    if (!told.empty()) written.insert("peloraAccount");
    EXPECT_EQ(written, told) << name;
  }
}

// A field that is added to a page.

constexpr std::array kAddedFields = {WizardField{.control = IDC_SYSTEM_ADMIN,
                                                 .attribute = CatalogueEntry("description"),
                                                 .label = IDC_SYSTEM_ADMIN_LABEL,
                                                 .default_text = "at first",
                                                 .missing = "Missing Description"}};
constexpr WizardPageTraits kAddedPage = {
    .dialog_template = IDD_WIZARD_EXT_COMPANY, .title = "Added", .fields = kAddedFields};

TEST(WizardRows, AFieldIsOneRowToBeSeenEnabledFilledAskedForAndWritten) {
  PageBench bench;
  OpenWizardPage<CWizardFieldPage<CWizardExtension, kAddedPage>> page(bench);
  Lines rows;
  for (const FieldRow& row : page.wizard().Fields()) {
    rows.push_back(ToLine(row, bench.Template(IDD_WIZARD_EXT_COMPANY)));
  }
  EXPECT_THAT(rows, ElementsAre(R"(peloraAccount: flag "Create Pelora Company")",
                                R"(description: text "System Administrator")"));
  EXPECT_EQ(page.dialog().Text(IDC_SYSTEM_ADMIN), "at first");
  EXPECT_FALSE(page.dialog().IsEnabled(IDC_SYSTEM_ADMIN));
  page.Click(IDC_CREATE_PELORA);
  EXPECT_TRUE(page.dialog().IsEnabled(IDC_SYSTEM_ADMIN));
  EXPECT_TRUE(page.dialog().IsEnabled(IDC_SYSTEM_ADMIN_LABEL));
  EXPECT_TRUE(page.NextEnabled());
  page.dialog().SetText(IDC_SYSTEM_ADMIN, "");
  EXPECT_FALSE(page.NextEnabled());
  page.dialog().SetText(IDC_SYSTEM_ADMIN, "typed");
  EXPECT_TRUE(page.NextEnabled());
  EXPECT_THAT(page.Changes(),
              ElementsAre("peloraAccount=1 (integer)", "description=typed (string)"));
}

}  // namespace
}  // namespace pelora
