// SPDX-License-Identifier: Apache-2.0
// Pages whose window is closed from outside while one of their handlers waits for a dialog or a
// chooser: what was chosen is nobody's any more, and nothing is written.
#include <array>

#include "features/archiver_dlg.h"
#include "tests/unit/features/features_bench.h"
#include "tests/unit/tab_bench.h"
#include "tests/unit/wizards/wizard_bench.h"
#include "wizards/wizard_ext_user.h"
#include "wizards/wizard_pages.h"

namespace pelora {
namespace {

using testing::Lines;
using testing::OpenWizardPage;

class ClosedMeanwhileTest : public testing::TabTest {
 protected:
  void OpenTab(std::string_view component) {
    Open(component, {{{"mail", Variant::String("ada@x")}, {"cn", Variant::String("One")}}});
    bench_.choosers.WhileOpen([this] { dialog().Close(); });
  }
  void CloseInNextDialog() {
    bench_.dialogs.PlayNext([this](HeadlessUser& /*user*/) { dialog().Close(); });
  }
  /// Clicks a button that opens a chooser, in which an object is chosen when the page has gone.
  void ChooseFrom(std::string_view component, ControlId button) {
    OpenTab(component);
    Choose({"CN=Two,DC=x"});
    bench_.choosers.Browse(kDialogOk, "LDAP://OU=Two,DC=x");
    ExpectClosedBy(button);
  }
  void ExpectClosedBy(ControlId button) {
    EXPECT_EQ(page().user().Click(button), UserAnswer::kDone);
    EXPECT_FALSE(dialog().IsOpen());
    EXPECT_EQ(Text(IDC_SERVER), "");
    EXPECT_TRUE(bench_.Writes().empty());
  }
};

TEST_F(ClosedMeanwhileTest, WhileAnAddressIsTyped) {
  OpenTab("CPropPageContact");
  CloseInNextDialog();
  ExpectClosedBy(IDC_EMAIL_ADD);
  OpenTab("CPropPageContact");
  page().SelectRow(IDC_EMAIL_LIST, "ADA@X");
  CloseInNextDialog();
  ExpectClosedBy(IDC_EMAIL_MODIFY);
}

TEST_F(ClosedMeanwhileTest, WhileObjectsAreChosen) {
  ChooseFrom("CPropPageContact", IDC_SENDAS_ADD);
  ChooseFrom("CPropPageCompany", IDC_SYSTEM_ADMIN_SELECT);
  ChooseFrom("CPropPageCompany", IDC_SERVER_SELECT);
  ChooseFrom("CPropPageCompanyQuota", IDC_QUOTA_RECIPIENTS_ADD);
  ChooseFrom("CPropPageCompanyRights", IDC_ADMIN_ADD);
  ChooseFrom("CPropPageAddresslist", IDC_SEARCH_BASE_SELECT);
}

TEST_F(ClosedMeanwhileTest, APageWhoseWindowIsGoneWritesNothing) {
  OpenTab("CPropPageAddresslistGeneral");
  page().Type(IDC_DESCRIPTION, "new");
  dialog().Close();
  EXPECT_FALSE(page().Apply());
  EXPECT_TRUE(bench_.Writes().empty());
}

class ClosedFeaturesTest : public testing::FeaturesTest {};

TEST_F(ClosedFeaturesTest, WhileArchiveServersAreEdited) {
  OpenOn({});
  bench_.dialogs.PlayNext([this](HeadlessUser& user) {
    user.TypeText(IDC_ARCHIVER_NAME, "arc1");
    user.Click(IDC_ARCHIVER_ADD);
    dialog().Close();
    user.Click(static_cast<ControlId>(kDialogOk));
  });
  DoubleClick(testing::kArchiverRow);
  EXPECT_FALSE(dialog().IsOpen());
  EXPECT_FALSE(page().Apply());
  EXPECT_TRUE(bench_.Writes().empty());
}

TEST_F(ClosedFeaturesTest, WhileAnArchiveServerIsChosen) {
  bench_.directory.AddObject(testing::kBob, {{"cn", Variant::String("bob")}});
  bench_.choosers.Choose({testing::kBob});
  bench_.dialogs.PlayNext([this](HeadlessUser& user) {
    bench_.choosers.WhileOpen([&user] { user.dialog().Close(); });
    user.Click(IDC_ARCHIVER_SEARCH);
    EXPECT_FALSE(user.dialog().IsOpen());
  });
  CArchiverDlg servers(bench_.platform, {"arc1"});
  EXPECT_EQ(servers.Show(nullptr), kDialogCancel);
  EXPECT_EQ(servers.servers(), StringSet{"arc1"});
}

TEST(ClosedWizardTest, WhileAServerIsChosen) {
  testing::PageBench bench;
  OpenWizardPage<CWizardExtUser> page(bench);
  page.Click(IDC_CREATE_PELORA);
  bench.directory.AddObject("LDAP://CN=Two,DC=x", {{"cn", Variant::String("two")}});
  bench.choosers.Choose(Lines{"LDAP://CN=Two,DC=x"});
  bench.choosers.WhileOpen([&page] { page.dialog().Close(); });
  page.Click(IDC_SERVER_SELECT);
  EXPECT_FALSE(page.dialog().IsOpen());
  EXPECT_EQ(page.dialog().Text(IDC_SERVER), "");
}

}  // namespace
}  // namespace pelora
