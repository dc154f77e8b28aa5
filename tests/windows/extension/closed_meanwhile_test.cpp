// SPDX-License-Identifier: Apache-2.0
// A sheet that its console takes away while one of its tabs waits for a dialog, a box or a chooser.
#include <functional>

#include "platform/dialog_controller.h"
#include "tests/windows/extension/user_tab.h"
#include "tests/windows/support/stand_in_picker.h"

namespace pelora::windows::test {
namespace {

constexpr const char* kAda = "LDAP://dc1/CN=Ada,DC=fake,DC=example";
constexpr RowIndex kArchiverRow = 0;

class ClosedMeanwhileTest : public UserTab {
 protected:
  ClosedMeanwhileTest() {
    directory().AddObject(kAda, {{"distinguishedName", Variant::String("CN=Ada,DC=fake")},
                                 {"cn", Variant::String("ada")},
                                 {"peloraAccount", Variant::Integer(1)}});
  }
  ~ClosedMeanwhileTest() override {
    EXPECT_FALSE(sheet().IsOpen());
    EXPECT_EQ(console_.TakeWrites(), Lines());
    EXPECT_EQ(picker_.references(), 0U);
    EXPECT_EQ(CanUnloadNow(), S_OK) << "nothing of the tab is left";
  }

  /// Clicks a button that opens the picker, which gives an object when the sheet has gone.
  void PickFrom(ControlId button) {
    PickedObjects picked({kAda});
    picker_.Choose(picked);
    picker_.WhileOpen([this] { sheet().Destroy(); });
    User().Click(button);
    EXPECT_EQ(picked.references(), 0U);
  }
  /// Has the sheet go while the next dialog is open.
  void CloseInNextDialog() {
    boxes_.PlayNext([this](HWND /*dialog*/) { sheet().Destroy(); });
  }

  StandInPicker picker_;
};

TEST_F(ClosedMeanwhileTest, WhileAnAddressIsAdded) {
  OpenUser({});
  CloseInNextDialog();
  User().Click(IDC_EMAIL_ADD);
}

TEST_F(ClosedMeanwhileTest, WhileAnAddressIsModified) {
  OpenUser({{"mail", Variant::String("a@x.test")}});
  ClickRow(IDC_EMAIL_LIST, "A@X.TEST");
  CloseInNextDialog();
  User().Click(IDC_EMAIL_MODIFY);
}

TEST_F(ClosedMeanwhileTest, WhileDelegatesArePicked) {
  OpenUser({});
  PickFrom(IDC_SENDAS_ADD);
}

TEST_F(ClosedMeanwhileTest, WhileTheServerIsPicked) {
  OpenUser({});
  PickFrom(IDC_SERVER_SELECT);
}

TEST_F(ClosedMeanwhileTest, WhileTheSystemAdministratorIsPicked) {
  Open("CPropPageCompany", {kAda});
  PickFrom(IDC_SYSTEM_ADMIN_SELECT);
}

TEST_F(ClosedMeanwhileTest, WhileArchiveServersAreEdited) {
  Open("CPropPageFeatures", {kAda});
  CloseInNextDialog();
  User().DoubleClickListViewCell(IDC_FEATURE_LIST, kArchiverRow, 0);
}

TEST_F(ClosedMeanwhileTest, WhileAnArchiveServerIsPicked) {
  Open("CPropPageFeatures", {kAda});
  boxes_.PlayNext([this](HWND dialog) {
    PickedObjects picked({kAda});
    picker_.Choose(picked);
    picker_.WhileOpen([this] { sheet().Destroy(); });
    WindowPlayer(dialog).Click(IDC_ARCHIVER_SEARCH);
    EXPECT_EQ(picked.references(), 0U);
  });
  User().DoubleClickListViewCell(IDC_FEATURE_LIST, kArchiverRow, 0);
}

TEST_F(ClosedMeanwhileTest, WhileAFailureIsTold) {
  OpenUser({{"mail", Variant::String("a@x.test")}});
  User().Click(IDC_PELORA_HIDDEN);
  console_.FailBinding(1, E_ACCESSDENIED);
  boxes_.BeforeNext([this] { sheet().Destroy(); });
  sheet().ClickApply();
  EXPECT_EQ(boxes_.TakeBoxes().size(), 1U);
}

}  // namespace
}  // namespace pelora::windows::test
