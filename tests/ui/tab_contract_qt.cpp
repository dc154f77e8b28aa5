// SPDX-License-Identifier: Apache-2.0
// Every tab in the console, over the sample company in a directory file.
#include <QCoreApplication>
#include <QTest>
#include <algorithm>
#include <deque>

#include "directory/attribute_catalogue.h"
#include "hosts/console/sheets/make_property_sheet.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/ldap/ads_path.h"
#include "hosts/session/property_tabs.h"
#include "resources/resource.h"
#include "server/class_table.h"
#include "tests/contract/features_tab_contract.h"
#include "tests/contract/same_edits.h"
#include "tests/contract/tab_contract.h"
#include "tests/contract/user_tab_contract.h"
#include "tests/support/fault_store.h"
#include "tests/ui/console_test.h"
#include "tests/ui/faults_of_sight.h"
#include "tests/ui/keep_picture.h"
#include "tests/ui/open_sheet.h"

namespace pelora::contract {
namespace {

using Names = std::vector<std::string>;

class QtConsole final : public TabConsole {
 public:
  ~QtConsole() override { EXPECT_TRUE(boxes_.empty()); }

  void Give(const std::string& name, const TabValues& values) override {
    std::vector<ldap::Modification> changes;
    for (const auto& [attribute, given] : values) {
      changes.push_back({ldap::Modification::Operation::kReplace, attribute, given});
    }
    const ldap::StoreStatus status = session().store->Modify(name, changes);
    EXPECT_TRUE(status.Ok()) << status.text;
  }

  void Open(const std::string& component, const Names& names) override {
    objects_ = company_.Objects(names);
    sheet_.reset();
    sheet_ = std::make_unique<test::OpenSheet>(session(), company_.module(), objects_,
                                               test::SheetFaults{.store = &store_, .plan = plan_});
    ShowTab(component);
  }
  /// Goes to another tab of the sheet.
  void ShowTab(const std::string& component) {
    const std::vector<Guid> tabs = session::TabsOf(objects_, {});
    const Guid tab = FindClass(component)->class_id;
    page_ = static_cast<std::size_t>(std::ranges::find(tabs, tab) - tabs.begin());
    sheet_->sheet().SelectPage(page_);
    QCoreApplication::processEvents();
    player_.emplace(Dialog().widget());
  }
  /// The number of the tab that shows.
  [[nodiscard]] std::size_t CurrentTab() const { return sheet_->sheet().CurrentPage(); }
  void Close() override {
    if (sheet_->sheet().HasUnsavedEdits()) company_.modal_scripts().Add(test::Press("&Discard"));
    sheet_->ClickCancel();
  }
  [[nodiscard]] IDialog& Page() override { return Dialog(); }
  [[nodiscard]] DialogPlayer& User() override { return *player_; }

  void Pick(const Names& names) override { sheet_->choosers().Choose(PathsOf(names)); }
  void Find(const Names& names) override {
    sheet_->choosers().Find(pelora::testing::ChosenObjects::AsObjectNames(PathsOf(names)));
  }
  void Browse(const std::string& name) override {
    sheet_->choosers().Browse(kDialogOk, ldap::AdsPathOf(name));
  }
  void PlayNext(DialogScript script) override {
    company_.modal_scripts().Add([script = std::move(script)](QWidget& window) {
      QtPlayer user(window);
      script(user);
    });
  }
  void AwaitBox(std::int32_t answer) override {
    const auto button = answer == kDialogYes  ? QMessageBox::Yes
                        : answer == kDialogNo ? QMessageBox::No
                                              : QMessageBox::Ok;
    company_.modal_scripts().Add([this, button](QWidget& window) {
      const auto* box = qobject_cast<QMessageBox*>(&window);
      ASSERT_NE(box, nullptr);
      boxes_.push_back(
          {.caption = console::ToUtf8(box->windowTitle()), .text = console::ToUtf8(box->text())});
      QTest::mouseClick(box->button(button), Qt::LeftButton);
    });
  }
  [[nodiscard]] TabBox TakeBox() override {
    if (boxes_.empty()) return {};
    TabBox box = std::move(boxes_.front());
    boxes_.pop_front();
    return box;
  }

  [[nodiscard]] bool IsApplyEnabled() const override { return sheet_->IsApplyEnabled(); }
  void ClickApply() override { sheet_->ClickApply(); }
  void ClickOk() override { sheet_->ClickOk(); }
  [[nodiscard]] bool IsOpen() const override { return sheet_->IsOpen(); }
  [[nodiscard]] bool WritesUntouched() const override { return false; }
  [[nodiscard]] bool LooksAfterFields() const override { return true; }

  void FailPut(const std::string& attribute, std::size_t nth) override {
    plan_->FailAttribute(pelora::testing::FaultPoint::kPut, attribute, nth, E_ACCESSDENIED);
  }
  void FailCommit(std::size_t nth) override { store_.FailChange(nth, {50, "no right to do that"}); }

  [[nodiscard]] Names FaultsOfSight() override { return test::FaultsOfSight(Dialog().widget()); }
  void SavePicture(const std::string& name) override { test::KeepPicture(sheet_->sheet(), name); }

  [[nodiscard]] TabValues Stored(const std::string& name) override {
    Names wanted;
    for (const Attribute& attribute : kAttributeCatalogue) wanted.emplace_back(attribute.name);
    ldap::Entry entry;
    EXPECT_TRUE(session().store->Read(name, wanted, entry).Ok()) << name;
    TabValues values;
    for (const std::string& attribute : wanted) values[attribute] = entry.attributes[attribute];
    return values;
  }

 private:
  [[nodiscard]] console::QtDialog& Dialog() { return *sheet_->sheet().Dialog(page_); }
  static Names PathsOf(const Names& names) {
    Names paths;
    for (const std::string& name : names) paths.push_back(ldap::AdsPathOf(name));
    return paths;
  }

  [[nodiscard]] session::DirectorySession& session() { return company_.session(); }

  test::OpenCompany company_;
  pelora::testing::FaultStore store_{*company_.session().store};
  std::shared_ptr<pelora::testing::FaultPlan> plan_ =
      std::make_shared<pelora::testing::FaultPlan>();
  std::deque<TabBox> boxes_;
  std::vector<session::DirectoryObject> objects_;
  std::unique_ptr<test::OpenSheet> sheet_;
  std::size_t page_ = 0;
  std::optional<QtPlayer> player_;
};

std::unique_ptr<TabConsole> MakeConsole() { return std::make_unique<QtConsole>(); }

INSTANTIATE_TEST_SUITE_P(Qt, TabContract, EveryTab(&MakeConsole), TabName);
INSTANTIATE_TEST_SUITE_P(Qt, FeaturesTabContract, ::testing::Values(&MakeConsole));
INSTANTIATE_TEST_SUITE_P(Qt, UserTabContract, ::testing::Values(&MakeConsole));

TEST(SameEdits, LeaveWhatEveryFaceLeaves) {
  EXPECT_EQ(PlaySameEdits(*MakeConsole()), SameEditsDump());
}

INSTANTIATE_TEST_SUITE_P(Qt, TabLooks, EveryTab(&MakeConsole), TabName);

TEST(TabsOfOneSheet, AreAppliedTogether) {
  QtConsole console;
  std::vector<TabScript> scripts = TabScripts();
  std::erase_if(scripts, [](const TabScript& script) {
    return !script.component.starts_with("CPropPageCompany");
  });
  ASSERT_EQ(scripts.size(), 3U);
  const std::string company = scripts.front().objects.front();
  TabValues expected = console.Stored(company);
  console.Open(scripts.front().component, {company});
  for (const TabScript& script : scripts) {
    console.ShowTab(script.component);
    PlaySteps(console, script.steps);
    for (const TabWrite& write : script.writes) expected[write.attribute] = write.values;
  }
  console.ClickOk();
  EXPECT_FALSE(console.IsOpen());
  EXPECT_EQ(console.Stored(company), expected);
}

TEST(TabsOfOneSheet, OneThatIsRefusedIsShownAndNothingIsWritten) {
  QtConsole console;
  const std::string list =
      "CN=Alle Personen,OU=Adresslisten,OU=Linden-Werke Chemnitz," + std::string(kSampleBase);
  const TabValues before = console.Stored(list);
  console.Open("CPropPageAddresslist", {list});
  console.User().Erase(IDC_SEARCH_QUERY);
  console.ShowTab("CPropPageAddresslistGeneral");
  console.User().Type(IDC_DESCRIPTION, "!");
  console.AwaitBox(kDialogOk);
  console.ClickOk();
  EXPECT_EQ(console.TakeBox(), ErrorBox("Validation of input fields failed: Missing Search Query"));
  EXPECT_TRUE(console.IsOpen());
  EXPECT_EQ(console.CurrentTab(), 1U);
  EXPECT_EQ(console.Stored(list), before);
  console.ShowTab("CPropPageAddresslist");
  console.User().Type(IDC_SEARCH_QUERY, "(a=*)");
  console.ClickOk();
  EXPECT_FALSE(console.IsOpen());
  TabValues expected = before;
  expected["description"].front() += "!";
  expected["peloraFilter"] = {"(a=*)"};
  EXPECT_EQ(console.Stored(list), expected);
}

}  // namespace
}  // namespace pelora::contract
