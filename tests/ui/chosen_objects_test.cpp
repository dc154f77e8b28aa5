// SPDX-License-Identifier: Apache-2.0
// The tree of containers, and what the extension gets of a choice.
#include <QTest>

#include "hosts/console/sheets/make_property_sheet.h"
#include "hosts/session/own_pages/own_pages.h"
#include "resources/resource.h"
#include "tests/ui/choosers_test.h"

namespace pelora::test {
namespace {

using ::testing::Contains;
using ::testing::IsSupersetOf;

class ChosenObjects : public ChoosersTest {
 protected:
  console::SheetResult MakeSheetOfRolf() {
    return console::MakePropertySheet(
        Objects({kRolf}), {},
        {.store = *session().store, .platform = platform_.platform(), .templates = templates_},
        nullptr);
  }

 private:
  resources::ResourceFile templates_ = session::WithOwnPages(module()).value.value();
};

// The tree of containers.

TEST_F(ChosenObjects, AContainerIsChosenFromTheTree) {
  std::string name;
  Play([](ChooserUser& user) {
    EXPECT_EQ(user.Title(), "Select Container");
    user.GoToContainer({"Linden-Werke Chemnitz", "Entwicklung", "Labor I/O"});
    user.Click("OK");
  });
  EXPECT_EQ(chooser_.BrowseContainer(name), S_OK);
  EXPECT_EQ(name,
            "OU=Labor I/O,OU=Entwicklung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example");
}

TEST_F(ChosenObjects, TheDomainItselfIsAContainerAndEnterTakesIt) {
  std::string name;
  Play([](ChooserUser& user) {
    user.Tree().setFocus();
    user.Press(Qt::Key_Return);
  });
  EXPECT_EQ(chooser_.BrowseContainer(name), S_OK);
  EXPECT_EQ(name, "DC=linden-werke,DC=example");
}

TEST_F(ChosenObjects, ACancelledTreeFails) {
  std::string name = "from before";
  Play([](ChooserUser& user) { user.Click("Cancel"); });
  EXPECT_EQ(chooser_.BrowseContainer(name), E_FAIL);
  EXPECT_EQ(name, "from before");
}

TEST_F(ChosenObjects, APathThatDoesNotFitIsNotTaken) {
  constexpr std::string_view kPath = "LDAP://localhost/DC=linden-werke,DC=example";
  std::string path;
  const auto refuse = [](ChooserUser& user) {
    user.Button("OK").click();
    EXPECT_EQ(user.Status(), "The name of this container is too long to be used here.");
    user.Click("Cancel");
  };
  Play(refuse);
  EXPECT_EQ(choosers_.BrowseForContainer(
                {.flags = 0, .path_capacity = static_cast<std::uint32_t>(kPath.size())}, path),
            2);
  EXPECT_EQ(path, "");
  Play([](ChooserUser& user) { user.Click("OK"); });
  EXPECT_EQ(choosers_.BrowseForContainer(
                {.flags = 0, .path_capacity = static_cast<std::uint32_t>(kPath.size() + 1)}, path),
            1);
  EXPECT_EQ(path, kPath);
}

// What a choice becomes.

TEST_F(ChosenObjects, PickersNeedToBeSetUp) {
  std::unique_ptr<IDsObjectPicker> picker;
  ASSERT_EQ(choosers_.CreateObjectPicker(picker), S_OK);
  Ref<IDataObject> chosen;
  EXPECT_EQ(picker->InvokeDialog(nullptr, chosen), E_UNEXPECTED);
}

TEST_F(ChosenObjects, ADelegateChosenOnTheUserTabIsWritten) {
  console::SheetResult made = MakeSheetOfRolf();
  ASSERT_TRUE(made.sheet);
  made.sheet->show();
  console::QtDialog& page = *made.sheet->Dialog(0);
  const EntryLines before = SearchEntry(file(), kRolf);
  Play([](ChooserUser& user) {
    user.Search("helga");
    user.ClickRow("Helga Önder");
    user.Click("Add");
    user.Search("rundschreiben");
    user.ClickRow("Rundschreiben");
    user.Click("OK");
  });
  page.Click(IDC_SENDAS_ADD);
  EXPECT_EQ(page.ListBox(IDC_SENDAS_LIST).Count(), 2U);
  EXPECT_TRUE(made.sheet->ApplyButton().isEnabled());
  QTest::mouseClick(&made.sheet->ApplyButton(), Qt::LeftButton);
  EXPECT_THAT(Difference(before, SearchEntry(file(), kRolf)),
              IsSupersetOf({"+ peloraSendAsPrivilege: " + kHelga,
                            std::string("+ peloraSendAsPrivilege: CN=Rundschreiben,OU=Gruppen,"
                                        "OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example")}));
}

TEST_F(ChosenObjects, AServerChosenOnTheUserTabIsWritten) {
  console::SheetResult made = MakeSheetOfRolf();
  ASSERT_TRUE(made.sheet);
  made.sheet->show();
  console::QtDialog& page = *made.sheet->Dialog(0);
  PlaySearched([](ChooserUser& user) { user.DoubleClickRow("mail02"); });
  page.Click(IDC_SERVER_SELECT);
  EXPECT_EQ(page.Text(IDC_SERVER), "mail02");
  QTest::mouseClick(&made.sheet->ApplyButton(), Qt::LeftButton);
  EXPECT_THAT(SearchEntry(file(), kRolf), Contains("peloraUserServer: mail02"));
}

}  // namespace
}  // namespace pelora::test
