// SPDX-License-Identifier: Apache-2.0
// The user tab in its sheet, from the click to the directory file.
#include <gmock/gmock.h>

#include <QDialogButtonBox>
#include <QPushButton>
#include <QTest>

#include "resources/resource.h"
#include "tests/support/fault_directory.h"
#include "tests/support/fault_store.h"
#include "tests/ui/console_test.h"
#include "tests/ui/open_sheet.h"

namespace pelora::test {
namespace {

using pelora::testing::FaultPoint;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

class UserSheet : public ConsoleTest {
 protected:
  [[nodiscard]] OpenSheet& Open(const std::vector<std::string>& names) {
    sheet_ = std::make_unique<OpenSheet>(session(), module(), Objects(names),
                                         SheetFaults{.store = &store_, .plan = plan_});
    return *sheet_;
  }
  [[nodiscard]] pelora::testing::FaultPlan& plan() { return *plan_; }
  [[nodiscard]] pelora::testing::FaultStore& store() { return store_; }
  [[nodiscard]] EntryLines Entry(const char* dn) const { return SearchEntry(file(), dn); }

 private:
  pelora::testing::FaultStore store_{*session().store};
  std::shared_ptr<pelora::testing::FaultPlan> plan_ =
      std::make_shared<pelora::testing::FaultPlan>();
  std::unique_ptr<OpenSheet> sheet_;
};

/// Gives an entry a capacity, as every apply of an ordinary user does.
void SetCapacity(const std::string& file, const char* dn) {
  ModifyEntry(file, std::string("dn: ") + dn +
                        "\nchangetype: modify\nadd: peloraResourceCapacity\n"
                        "peloraResourceCapacity: 0\n");
}

TEST_F(UserSheet, TickingTheAccountWritesThatAttributeAndNoOther) {
  SetCapacity(file(), kRolf);
  const EntryLines before = Entry(kRolf);
  OpenSheet& open = Open({kRolf});
  EXPECT_EQ(open.dialog().Check(IDC_PELORA_ACCOUNT), CheckState::kUnchecked);
  open.user().Click(IDC_PELORA_ACCOUNT);
  open.ClickApply();
  EXPECT_THAT(Difference(before, Entry(kRolf)),
              ElementsAre("- peloraAccount: 0", "+ peloraAccount: 1"));
  EXPECT_TRUE(open.IsOpen());
}

TEST_F(UserSheet, OkWithoutAnEditWritesNothing) {
  const EntryLines before = Entry(kBirgit);
  OpenSheet& open = Open({kBirgit});
  open.ClickOk();
  EXPECT_FALSE(open.IsOpen());
  EXPECT_THAT(Difference(before, Entry(kBirgit)), IsEmpty());
}

TEST_F(UserSheet, HidesAUserWhoseNameHoldsAComma) {
  SetCapacity(file(), kAnna);
  const EntryLines before = Entry(kAnna);
  OpenSheet& open = Open({kAnna});
  open.user().Click(IDC_PELORA_HIDDEN);
  open.ClickOk();
  EXPECT_FALSE(open.IsOpen());
  EXPECT_THAT(Difference(before, Entry(kAnna)), ElementsAre("+ peloraHidden: 1"));
}

TEST_F(UserSheet, TheTitleCountsSeveralUsers) {
  EXPECT_EQ(Open({kBirgit, kRolf, kUrsula}).sheet().windowTitle().toStdString(),
            "3 selected objects Properties");
}

TEST_F(UserSheet, ApplyIsEnabledOnlyWhileThereIsSomethingToApply) {
  OpenSheet& open = Open({kBirgit});
  EXPECT_EQ(open.sheet().windowTitle().toStdString(), "Birgit Krämer Properties");
  EXPECT_FALSE(open.IsApplyEnabled());
  open.user().Click(IDC_PELORA_HIDDEN);
  EXPECT_TRUE(open.IsApplyEnabled());
  open.ClickApply();
  EXPECT_FALSE(open.IsApplyEnabled());
  EXPECT_TRUE(open.IsOpen());
  open.user().Type(IDC_QUOTA_WARN, "1");
  EXPECT_FALSE(open.IsApplyEnabled()) << "the field is disabled while the quota is not the user's";
  open.user().Click(IDC_QUOTA_OVERRIDE);
  EXPECT_TRUE(open.IsApplyEnabled());
}

TEST_F(UserSheet, EveryApplyWritesWhatWasEditedSince) {
  SetCapacity(file(), kBirgit);
  OpenSheet& open = Open({kBirgit});
  open.user().Click(IDC_PELORA_HIDDEN);
  open.ClickApply();
  const EntryLines between = Entry(kBirgit);
  EXPECT_THAT(between, ::testing::Contains("peloraHidden: 1"));
  open.user().Click(IDC_PELORA_HIDDEN);
  open.ClickApply();
  EXPECT_THAT(Difference(between, Entry(kBirgit)),
              ElementsAre("- peloraHidden: 1", "+ peloraHidden: 0"));
}

TEST_F(UserSheet, CancelWithoutEditsAsksNothing) {
  OpenSheet& open = Open({kBirgit});
  open.ClickCancel();
  EXPECT_FALSE(open.IsOpen());
}

TEST_F(UserSheet, CancelAsksBeforeEditsAreLost) {
  const EntryLines before = Entry(kBirgit);
  OpenSheet& open = Open({kBirgit});
  open.user().Click(IDC_PELORA_HIDDEN);
  modal_scripts().Add(Press("&Keep Editing"));
  open.ClickCancel();
  EXPECT_TRUE(open.IsOpen());
  EXPECT_EQ(open.dialog().Check(IDC_PELORA_HIDDEN), CheckState::kChecked);
  modal_scripts().Add(Press("&Discard"));
  open.ClickCancel();
  EXPECT_FALSE(open.IsOpen());
  EXPECT_THAT(Difference(before, Entry(kBirgit)), IsEmpty());
}

TEST_F(UserSheet, EnterAndEscapeKeepTheEditsWhenAsked) {
  OpenSheet& open = Open({kBirgit});
  open.user().Click(IDC_PELORA_HIDDEN);
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
    modal_scripts().Add([key](QWidget& window) { QTest::keyClick(&window, key); });
    QTest::keyClick(&open.sheet(), Qt::Key_Escape);
    EXPECT_TRUE(open.IsOpen());
  }
}

TEST_F(UserSheet, TheCloseBoxIsCancel) {
  OpenSheet& open = Open({kBirgit});
  open.user().Click(IDC_PELORA_HIDDEN);
  modal_scripts().Add(Press("&Keep Editing"));
  EXPECT_FALSE(open.sheet().close());
  EXPECT_TRUE(open.IsOpen());
  modal_scripts().Add(Press("&Discard"));
  EXPECT_TRUE(open.sheet().close());
  EXPECT_FALSE(open.IsOpen());
}

TEST_F(UserSheet, ADirectoryThatRefusesTheWriteIsReportedAndTheEditsStay) {
  SetCapacity(file(), kBirgit);
  const EntryLines before = Entry(kBirgit);
  OpenSheet& open = Open({kBirgit});
  open.user().Click(IDC_PELORA_HIDDEN);
  store().FailChange(1, {50, "no right to do that"});
  ShownBox box;
  modal_scripts().Add(Confirm(box));
  open.ClickOk();
  EXPECT_EQ(box.caption, "Pelora Error");
  EXPECT_EQ(box.text, std::string("Unknown error occured\n\nError code: 0X80070005\n\nObject: ") +
                          kBirgit +
                          "\nFields: Hide from addressbook\n"
                          "The directory says: no right to do that\n\n"
                          "You may not change this. What you typed is kept here: get the right to "
                          "change it and apply again.");
  EXPECT_EQ(box.icon, QMessageBox::Critical);
  EXPECT_TRUE(open.IsOpen());
  EXPECT_TRUE(open.IsApplyEnabled());
  EXPECT_TRUE(open.sheet().HasUnsavedEdits());
  EXPECT_THAT(Difference(before, Entry(kBirgit)), IsEmpty());

  modal_scripts().Add(Press("&Keep Editing"));
  open.ClickCancel();
  EXPECT_TRUE(open.IsOpen());
  open.ClickOk();
  EXPECT_FALSE(open.IsOpen());
  EXPECT_FALSE(open.sheet().HasUnsavedEdits());
  EXPECT_THAT(Difference(before, Entry(kBirgit)), ElementsAre("+ peloraHidden: 1"));
}

TEST_F(UserSheet, WhatSomebodyElseChangedMeanwhileIsToldAndNotOverwritten) {
  SetCapacity(file(), kBirgit);
  OpenSheet& open = Open({kBirgit});
  open.user().Click(IDC_PELORA_HIDDEN);
  ModifyEntry(file(), std::string("dn: ") + kBirgit +
                          "\nchangetype: modify\nreplace: peloraHidden\npeloraHidden: 0\n");
  const EntryLines before = Entry(kBirgit);
  ShownBox box;
  modal_scripts().Add(Confirm(box));
  open.ClickOk();
  EXPECT_TRUE(open.IsOpen());
  EXPECT_EQ(box.caption, "Pelora Error");
  EXPECT_EQ(box.icon, QMessageBox::Warning);
  EXPECT_THAT(box.text, HasSubstr("Hide from addressbook was not set when it was read, is 0 now, "
                                  "and was to become 1."));
  EXPECT_THAT(Difference(before, Entry(kBirgit)), IsEmpty());
  modal_scripts().Add(Press("&Discard"));
  open.ClickCancel();
  EXPECT_FALSE(open.IsOpen());
}

TEST_F(UserSheet, UsersBeforeTheOneThatFailsKeepWhatWasWritten) {
  for (const char* dn : {kAnna, kBirgit, kRolf}) SetCapacity(file(), dn);
  const std::vector<EntryLines> before = {Entry(kAnna), Entry(kBirgit), Entry(kRolf)};
  OpenSheet& open = Open({kAnna, kBirgit, kRolf});
  open.user().Click(IDC_PELORA_HIDDEN);
  store().FailChange(2, {50, "no right to do that"});
  ShownBox box;
  modal_scripts().Add(Confirm(box));
  open.ClickApply();
  EXPECT_EQ(box.caption, "Pelora Error");
  EXPECT_THAT(Difference(before[0], Entry(kAnna)), ElementsAre("+ peloraHidden: 1"));
  EXPECT_THAT(Difference(before[1], Entry(kBirgit)), IsEmpty());
  EXPECT_THAT(Difference(before[2], Entry(kRolf)), IsEmpty());
}

TEST_F(UserSheet, AUserThatCannotBeReadIsReportedAndThePageStaysEmpty) {
  plan().Fail(FaultPoint::kGetObject, 1, kNoSuchObject);
  ShownBox box;
  modal_scripts().Add(Confirm(box));
  OpenSheet& open = Open({kBirgit});
  EXPECT_EQ(box.caption, "Pelora Error");
  EXPECT_EQ(box.text, "Unable to get connection with the ldap user.\n\nError code: 0X80072030");
  EXPECT_EQ(box.icon, QMessageBox::Critical);
  EXPECT_EQ(open.dialog().Text(IDC_SERVER), "");
  EXPECT_FALSE(open.IsApplyEnabled());
}

TEST_F(UserSheet, AFieldThatFailsIsNamed) {
  OpenSheet& open = Open({kBirgit});
  open.user().Click(IDC_PELORA_HIDDEN);
  plan().FailAttribute(FaultPoint::kPut, "peloraHidden", 1, E_ADS_CANT_CONVERT_DATATYPE);
  ShownBox box;
  modal_scripts().Add(Confirm(box));
  open.ClickApply();
  EXPECT_EQ(box.text, "Failed on field 'peloraHidden\n\nError code: 0X8000500C");
  EXPECT_EQ(box.icon, QMessageBox::Critical);
}

TEST_F(UserSheet, AStatusThatIsNoFailureIsAWarning) {
  plan().Fail(FaultPoint::kGetObject, 1, S_ADS_ERRORSOCCURRED);
  ShownBox box;
  modal_scripts().Add(Confirm(box));
  (void)Open({kBirgit});
  EXPECT_EQ(box.text, "Unable to get connection with the ldap user.\n\nError code: 0X5011");
  EXPECT_EQ(box.icon, QMessageBox::Warning);
}

TEST_F(UserSheet, ATabWhoseDirectoryDoesNotAnswerIsNotShown) {
  plan().Fail(FaultPoint::kOpenObject, 1, E_FAIL);
  const OpenSheet& open = Open({kBirgit});
  EXPECT_EQ(open.sheet().PageCount(), 4U) << "the features and the pages of our own";
  EXPECT_THAT(open.Missing(),
              ::testing::StartsWith("Some of the properties of Birgit Krämer cannot be shown "
                                    "(error code 0X80004005). "));
  plan().Fail(FaultPoint::kOpenObject, 1, E_FAIL);
  plan().Fail(FaultPoint::kOpenObject, 2, E_FAIL);
  EXPECT_THROW((void)Open({kBirgit}), std::runtime_error);
}

TEST_F(UserSheet, AClosedSheetReleasesItsComponents) {
  OpenSheet& open = Open({kBirgit});
  EXPECT_EQ(open.components(), 2) << "the user tab and the features tab";
  open.Destroy();
  EXPECT_EQ(open.components(), 0);
}

}  // namespace
}  // namespace pelora::test
