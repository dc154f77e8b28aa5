// SPDX-License-Identifier: Apache-2.0
// The Select buttons of wizard pages: what is chosen in the system's choosers is shown and written.
#include <cwchar>

#include "hosts/windows/values/wide_text.h"
#include "resources/resource.h"
#include "tests/windows/support/stand_in_browser.h"
#include "tests/windows/support/stand_in_picker.h"
#include "tests/windows/wizards/wizard_test.h"

namespace pelora::windows::test {
namespace {

using pelora::testing::FakeAttributes;

constexpr const char* kServer = "LDAP://dc1/CN=node-2,OU=Servers,DC=fake,DC=example";

class WizardChoosersTest : public WizardTest {
 protected:
  WizardChoosersTest() {
    console_.directory().AddObject(kServer, {{"cn", Variant::String("nöde-2")}});
  }
  ~WizardChoosersTest() override { EXPECT_EQ(picker_.references(), 0U); }

  StandInPicker picker_;
};

TEST_F(WizardChoosersTest, AHomeServerIsChosenOverThePageAndWritten) {
  Open("CWizardExtUser");
  GoToPage("Mia");
  console_.User().Click(IDC_CREATE_PELORA);
  console_.User().Type(IDC_NEW_ADDRESS, "mia@x.test");
  console_.User().Click(IDC_SERVER_SELECT);
  EXPECT_EQ(Text(IDC_SERVER), "") << "nothing was chosen";
  PickedObjects picked({kServer});
  picker_.Choose(picked);
  console_.User().Click(IDC_SERVER_SELECT);
  EXPECT_EQ(picker_.owner(), console_.Page());
  EXPECT_EQ(picked.references(), 0U);
  EXPECT_EQ(Text(IDC_SERVER), "nöde-2");
  (void)Finish();
  EXPECT_EQ(console_.directory().Value(WizardConsole::PathOf("Mia"), "peloraUserServer"),
            Variant::String("nöde-2"));
}

TEST_F(WizardChoosersTest, AWizardThatIsClosedWhileAServerIsPickedEndsThere) {
  Open("CWizardExtUser");
  GoToPage("Mia");
  console_.User().Click(IDC_CREATE_PELORA);
  PickedObjects picked({kServer});
  picker_.Choose(picked);
  picker_.WhileOpen([this] { console_.CloseWindow(); });
  console_.User().Click(IDC_SERVER_SELECT);
  EXPECT_EQ(picked.references(), 0U);
  EXPECT_FALSE(console_.IsOpen());
  EXPECT_EQ(console_.extension(0).WriteData(nullptr, 1), E_UNEXPECTED);
}

TEST_F(WizardChoosersTest, ASearchBaseIsBrowsedForAndWritten) {
  StandInBrowser browser(BrowserExports::kByName);
  OpenPrimary("CWizardAddresslist", "CWizardExtAddresslist");
  console_.User().Type(IDC_OBJECT_NAME, "All");
  console_.Next();
  console_.User().Click(IDC_CREATE_PELORA);
  console_.User().Type(IDC_SEARCH_QUERY, "(cn=*)");
  console_.User().Click(IDC_SEARCH_BASE_SELECT);
  EXPECT_EQ(Text(IDC_SEARCH_BASE), "") << "the browser was cancelled";
  std::wcscpy(browser.plan().path, ToWide("LDAP://dc1/OU=Größe 月,DC=fake").c_str());
  browser.plan().answer = IDOK;
  console_.User().Click(IDC_SEARCH_BASE_SELECT);
  EXPECT_EQ(Text(IDC_SEARCH_BASE), "OU=Größe 月,DC=fake");
  (void)Finish();
  EXPECT_EQ(console_.directory().Value(WizardConsole::PathOf("All"), "peloraBase"),
            Variant::String("OU=Größe 月,DC=fake"));
}

}  // namespace
}  // namespace pelora::windows::test
