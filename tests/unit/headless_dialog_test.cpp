// SPDX-License-Identifier: Apache-2.0
// The parts of dialogs in memory that no other adapter has: what the user is told when an action is
// refused, and what a test or the command line can read. The rest is the dialog contract's.
#include "hosts/headless/headless_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "hosts/headless/headless_user.h"
#include "hosts/resources/resource_file.h"
#include "resources/resource.h"

namespace pelora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Writes down the commands, and ends nothing.
class CommandLog : public IDialogController {
 public:
  std::int32_t OnInitDialog(IDialog& /*dialog*/) override { return init_answer; }
  std::int32_t OnCommand(ControlId id, ControlNotification /*notification*/) override {
    commands.push_back(id);
    return 0;
  }
  void OnDestroy() override { ++destroyed; }

  std::int32_t init_answer = 0;
  std::vector<ControlId> commands;
  int destroyed = 0;
};

resources::DialogTemplate UserTab() {
  const auto file = resources::ResourceFile::Read(resources::EmbeddedResourceBytes());
  return file.value.value().Dialog(IDD_PROPPAGE_USER).value.value();
}

class HeadlessDialogTest : public testing::Test {
 protected:
  HeadlessDialogTest() { dialog.Open(); }

  CommandLog log;
  HeadlessDialog dialog{UserTab(), log};
  HeadlessUser user{dialog};
};

TEST_F(HeadlessDialogTest, NamesItsTitleAndControls) {
  EXPECT_EQ(dialog.title(), "Pelora");
  EXPECT_EQ(dialog.controls().size(), 30U);
  ASSERT_NE(dialog.Find(IDC_SERVER), nullptr);
  EXPECT_TRUE(dialog.Find(IDC_SERVER)->IsReadOnly());
  EXPECT_FALSE(dialog.Find(IDC_SERVER)->TakesDigitsOnly());
  EXPECT_TRUE(dialog.Find(IDC_CAPACITY)->TakesDigitsOnly());
  EXPECT_EQ(dialog.Find(12345), nullptr);
}

TEST_F(HeadlessDialogTest, SaysWhyAnActionIsRefused) {
  EXPECT_EQ(user.Click(12345), UserAnswer::kNoSuchControl);
  EXPECT_EQ(user.Click(IDC_EMAIL_DELETE), UserAnswer::kDisabled);
  EXPECT_EQ(user.Click(IDC_CAPACITY), UserAnswer::kWrongKind);
  EXPECT_EQ(user.Click(IDC_SERVER_GROUP), UserAnswer::kWrongKind);
  EXPECT_EQ(user.TypeText(IDC_SERVER, "x"), UserAnswer::kReadOnly);
  EXPECT_EQ(user.EraseText(IDC_SERVER), UserAnswer::kReadOnly);
  EXPECT_EQ(user.TypeText(IDC_PELORA_ACCOUNT, "x"), UserAnswer::kWrongKind);
  EXPECT_EQ(user.EraseText(IDC_PELORA_ACCOUNT), UserAnswer::kWrongKind);
  EXPECT_EQ(user.SelectListRow(IDC_EMAIL_LIST, 0), UserAnswer::kNoSuchRow);
  EXPECT_EQ(user.SelectListRow(IDC_ACCOUNT_TYPE, 0), UserAnswer::kWrongKind);
  EXPECT_EQ(user.SelectComboRow(IDC_ACCOUNT_TYPE, 0), UserAnswer::kNoSuchRow);
  EXPECT_EQ(user.SelectComboRow(IDC_EMAIL_LIST, 0), UserAnswer::kWrongKind);
  EXPECT_EQ(user.ClickListViewCell(IDC_EMAIL_LIST, 0, 0, false), UserAnswer::kWrongKind);
  EXPECT_EQ(user.PressEnter(), UserAnswer::kNoSuchControl);
  EXPECT_EQ(user.CloseWindow(), UserAnswer::kWrongKind);
  dialog.SetShown(IDC_SERVER_SELECT, false);
  dialog.SetEnabled(IDC_SERVER_SELECT, false);
  EXPECT_EQ(user.Click(IDC_SERVER_SELECT), UserAnswer::kHidden);
  EXPECT_THAT(log.commands, IsEmpty());
}

TEST_F(HeadlessDialogTest, TypesTheDigitsAndSaysThatOthersWereRefused) {
  EXPECT_EQ(user.TypeText(IDC_CAPACITY, "1x2"), UserAnswer::kCharactersRefused);
  EXPECT_EQ(dialog.Text(IDC_CAPACITY), "12");
  EXPECT_THAT(log.commands, ElementsAre(IDC_CAPACITY, IDC_CAPACITY));
  EXPECT_EQ(user.TypeText(IDC_CAPACITY, "3"), UserAnswer::kDone);
}

TEST_F(HeadlessDialogTest, TypesLettersWhole) {
  EXPECT_EQ(user.TypeText(IDC_QUOTA_WARN, "ä€\U0001F4EE"), UserAnswer::kDone);
  EXPECT_EQ(dialog.Text(IDC_QUOTA_WARN), "ä€\U0001F4EE");
  EXPECT_EQ(log.commands.size(), 3U);
}

TEST_F(HeadlessDialogTest, ErasingAnEmptyFieldTellsNobody) {
  EXPECT_EQ(user.EraseText(IDC_QUOTA_WARN), UserAnswer::kDone);
  EXPECT_THAT(log.commands, IsEmpty());
}

TEST_F(HeadlessDialogTest, StopsTypingWhenTheFieldIsDisabledMeanwhile) {
  class Disabling final : public CommandLog {
   public:
    std::int32_t OnInitDialog(IDialog& dialog) override {
      dialog_ = &dialog;
      return 0;
    }
    std::int32_t OnCommand(ControlId id, ControlNotification /*notification*/) override {
      dialog_->SetEnabled(id, false);
      return 0;
    }

   private:
    IDialog* dialog_ = nullptr;
  } controller;
  HeadlessDialog other(UserTab(), controller);
  other.Open();
  EXPECT_EQ(HeadlessUser(other).TypeText(IDC_QUOTA_WARN, "12"), UserAnswer::kDisabled);
  EXPECT_EQ(other.Text(IDC_QUOTA_WARN), "1");
}

TEST_F(HeadlessDialogTest, ChoosingTheRowThatStandsTellsNobody) {
  EXPECT_TRUE(dialog.ListBox(IDC_SENDAS_LIST).Add("a").has_value());
  EXPECT_EQ(user.SelectListRow(IDC_SENDAS_LIST, 0), UserAnswer::kDone);
  EXPECT_EQ(user.SelectListRow(IDC_SENDAS_LIST, 0), UserAnswer::kDone);
  EXPECT_THAT(log.commands, ElementsAre(IDC_SENDAS_LIST));
}

TEST_F(HeadlessDialogTest, KeepsWhatThePageSaysOfItsChanges) {
  EXPECT_EQ(dialog.PageModified(), std::nullopt);
  dialog.SetPageModified(true);
  EXPECT_EQ(dialog.PageModified(), true);
  dialog.SetPageModified(false);
  EXPECT_EQ(dialog.PageModified(), false);
}

TEST_F(HeadlessDialogTest, KeepsTabStops) {
  dialog.ListBox(IDC_EMAIL_LIST).SetTabStops(std::array{10, 20});
  EXPECT_THAT(dialog.Find(IDC_EMAIL_LIST)->list_box->tab_stops(), ElementsAre(10, 20));
}

TEST_F(HeadlessDialogTest, MeasuresInPixelsWithoutTheFrame) {
  // 181 units of 6/4 pixels, less two on each side.
  EXPECT_EQ(dialog.ClientWidth(IDC_EMAIL_LIST), 268);
  EXPECT_EQ(dialog.ClientWidth(IDC_EMAIL_ADD), 90);
}

TEST_F(HeadlessDialogTest, GivesTheControllersAnswers) {
  CommandLog failing;
  failing.init_answer = -5;
  HeadlessDialog other(UserTab(), failing);
  EXPECT_EQ(other.Open(), -5);
}

TEST_F(HeadlessDialogTest, IsClosedOnceAndSilentFromThenOn) {
  dialog.Close();
  dialog.Close();
  EXPECT_EQ(log.destroyed, 1);
  EXPECT_EQ(user.Click(IDC_EMAIL_ADD), UserAnswer::kDialogClosed);
  EXPECT_EQ(user.PressEnter(), UserAnswer::kDialogClosed);
  EXPECT_EQ(user.CloseWindow(), UserAnswer::kDialogClosed);
  dialog.SetText(IDC_QUOTA_WARN, "1");
  EXPECT_THAT(log.commands, IsEmpty());
}

TEST(HeadlessDialog, TellsNobodyOfItsEndWhenItNeverStood) {
  CommandLog log;
  {
    const HeadlessDialog dialog(UserTab(), log);
    EXPECT_FALSE(dialog.IsOpen());
  }
  EXPECT_EQ(log.destroyed, 0);
}

TEST(HeadlessUser, DescribesEveryAnswer) {
  EXPECT_EQ(Describe(UserAnswer::kDone), "Done.");
  EXPECT_EQ(Describe(UserAnswer::kDialogClosed), "The dialog is closed.");
  EXPECT_EQ(Describe(UserAnswer::kNoSuchControl), "The dialog has no such control.");
  EXPECT_EQ(Describe(UserAnswer::kWrongKind), "The control is of another kind.");
  EXPECT_EQ(Describe(UserAnswer::kHidden), "The control is hidden.");
  EXPECT_EQ(Describe(UserAnswer::kDisabled), "The control is disabled.");
  EXPECT_EQ(Describe(UserAnswer::kReadOnly), "The field is read-only.");
  EXPECT_EQ(Describe(UserAnswer::kCharactersRefused), "The field takes digits only.");
  EXPECT_EQ(Describe(UserAnswer::kNoSuchRow), "There is no such row.");
}

}  // namespace
}  // namespace pelora
