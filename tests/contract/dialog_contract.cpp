// SPDX-License-Identifier: Apache-2.0
// Life of a dialog, and what the template says of its controls.
#include "tests/contract/dialog_contract.h"

#include <gmock/gmock.h>

#include "tests/contract/contract_ids.h"
#include "tests/contract/recording_controller.h"

namespace pelora::contract {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_P(DialogContract, TellsItsControllerOfItsBeginningAndItsEnd) {
  RecordingController controller;
  auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  ASSERT_NE(open, nullptr);
  EXPECT_THAT(controller.events(), ElementsAre("init"));
  open.reset();
  EXPECT_THAT(controller.events(), ElementsAre("init", "destroy"));
}

TEST_P(DialogContract, IsNotMadeWithoutATemplate) {
  RecordingController controller;
  EXPECT_EQ(Driver().Open(IDD_CONTRACT_NONE, controller), nullptr);
  EXPECT_THAT(controller.events(), IsEmpty());
}

TEST_P(DialogContract, HasTheTemplatesTextsBeforeItIsShown) {
  RecordingController controller;
  controller.on_init = [](IDialog& dialog) {
    EXPECT_EQ(dialog.Text(IDC_CONTRACT_GROUP), "Gr&oup");
    EXPECT_EQ(dialog.Text(IDC_CONTRACT_LABEL), "&Label für Ärzte");
    EXPECT_EQ(dialog.Text(IDC_CONTRACT_CHECK), "&Two states");
    EXPECT_EQ(dialog.Text(IDC_CONTRACT_THREE_STATE), "T&hree states");
    EXPECT_EQ(dialog.Text(IDC_CONTRACT_BUTTON), "&Button");
    EXPECT_EQ(dialog.Text(IDC_CONTRACT_HIDDEN_BUTTON), "Hidden");
    EXPECT_EQ(dialog.Text(IDC_CONTRACT_EDIT), "");
  };
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  EXPECT_THAT(controller.events(), ElementsAre("init"));
}

TEST_P(DialogContract, HasTheTemplatesDisabledControlsBeforeItIsShown) {
  RecordingController controller;
  controller.on_init = [](IDialog& dialog) {
    for (const ControlId id :
         {IDC_CONTRACT_DISABLED_EDIT, IDC_CONTRACT_DISABLED_CHECK, IDC_CONTRACT_DISABLED_BUTTON,
          IDC_CONTRACT_DISABLED_LIST, IDC_CONTRACT_DISABLED_COMBO}) {
      EXPECT_FALSE(dialog.IsEnabled(id)) << id;
      EXPECT_TRUE(dialog.IsShown(id)) << id;
    }
    for (const ControlId id :
         {IDC_CONTRACT_GROUP, IDC_CONTRACT_LABEL, IDC_CONTRACT_EDIT, IDC_CONTRACT_NUMBER_EDIT,
          IDC_CONTRACT_READONLY_EDIT, IDC_CONTRACT_HIDDEN_EDIT, IDC_CONTRACT_CHECK,
          IDC_CONTRACT_THREE_STATE, IDC_CONTRACT_BUTTON, IDC_CONTRACT_HIDDEN_BUTTON,
          IDC_CONTRACT_SORTED_LIST, IDC_CONTRACT_PLAIN_LIST, IDC_CONTRACT_COMBO,
          IDC_CONTRACT_LIST_VIEW}) {
      EXPECT_TRUE(dialog.IsEnabled(id)) << id;
    }
  };
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  EXPECT_THAT(controller.events(), ElementsAre("init"));
}

TEST_P(DialogContract, HasTheTemplatesHiddenControlsBeforeItIsShown) {
  RecordingController controller;
  controller.on_init = [](IDialog& dialog) {
    for (const ControlId id : {IDC_CONTRACT_HIDDEN_EDIT, IDC_CONTRACT_HIDDEN_BUTTON}) {
      EXPECT_FALSE(dialog.IsShown(id)) << id;
      EXPECT_TRUE(dialog.IsEnabled(id)) << id;
    }
    for (const ControlId id : {IDC_CONTRACT_GROUP, IDC_CONTRACT_LABEL, IDC_CONTRACT_EDIT,
                               IDC_CONTRACT_CHECK, IDC_CONTRACT_BUTTON, IDC_CONTRACT_SORTED_LIST,
                               IDC_CONTRACT_COMBO, IDC_CONTRACT_LIST_VIEW}) {
      EXPECT_TRUE(dialog.IsShown(id)) << id;
    }
  };
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  EXPECT_THAT(controller.events(), ElementsAre("init"));
}

TEST_P(DialogContract, StartsWithEmptyListsAndUncheckedBoxes) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IDialog& dialog = *controller.dialog();
  EXPECT_EQ(dialog.ListBox(IDC_CONTRACT_SORTED_LIST).Count(), 0U);
  EXPECT_EQ(dialog.ListBox(IDC_CONTRACT_SORTED_LIST).Selection(), std::nullopt);
  EXPECT_EQ(dialog.ComboBox(IDC_CONTRACT_COMBO).Count(), 0U);
  EXPECT_EQ(dialog.ComboBox(IDC_CONTRACT_COMBO).Selection(), std::nullopt);
  EXPECT_EQ(dialog.ListView(IDC_CONTRACT_LIST_VIEW).RowCount(), 0U);
  EXPECT_EQ(dialog.Check(IDC_CONTRACT_CHECK), CheckState::kUnchecked);
  EXPECT_EQ(dialog.Check(IDC_CONTRACT_THREE_STATE), CheckState::kUnchecked);
  EXPECT_EQ(dialog.Style(IDC_CONTRACT_CHECK), ButtonStyle::kAutoCheckBox);
  EXPECT_EQ(dialog.Style(IDC_CONTRACT_THREE_STATE), ButtonStyle::kAutoThreeState);
}

TEST_P(DialogContract, SharesNothingWithAnotherOpenDialog) {
  RecordingController first;
  RecordingController second;
  const auto first_open = Driver().Open(IDD_CONTRACT_PAGE, first);
  auto second_open = Driver().Open(IDD_CONTRACT_SECOND_PAGE, second);
  second.dialog()->SetText(IDC_CONTRACT_EDIT, "second");
  second_open->User().Click(IDC_CONTRACT_CHECK);
  EXPECT_EQ(first.dialog()->Text(IDC_CONTRACT_EDIT), "");
  EXPECT_EQ(first.dialog()->Check(IDC_CONTRACT_CHECK), CheckState::kUnchecked);
  EXPECT_THAT(first.events(), ElementsAre("init"));
  second_open.reset();
  first.dialog()->SetText(IDC_CONTRACT_EDIT, "first");
  EXPECT_EQ(first.dialog()->Text(IDC_CONTRACT_EDIT), "first");
  EXPECT_THAT(second.events(), ElementsAre("init", "edited 1003", "clicked 1010", "destroy"));
}

TEST_P(DialogContract, EnablesAndShowsControlsIndependently) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IDialog& dialog = *controller.dialog();
  for (const ControlId id :
       {IDC_CONTRACT_EDIT, IDC_CONTRACT_CHECK, IDC_CONTRACT_BUTTON, IDC_CONTRACT_SORTED_LIST,
        IDC_CONTRACT_COMBO, IDC_CONTRACT_LIST_VIEW, IDC_CONTRACT_LABEL, IDC_CONTRACT_GROUP}) {
    dialog.SetEnabled(id, false);
    EXPECT_FALSE(dialog.IsEnabled(id)) << id;
    EXPECT_TRUE(dialog.IsShown(id)) << id;
    dialog.SetShown(id, false);
    EXPECT_FALSE(dialog.IsShown(id)) << id;
    dialog.SetEnabled(id, true);
    EXPECT_TRUE(dialog.IsEnabled(id)) << id;
    EXPECT_FALSE(dialog.IsShown(id)) << id;
    dialog.SetShown(id, true);
    EXPECT_TRUE(dialog.IsShown(id)) << id;
  }
  EXPECT_THAT(controller.events(), ElementsAre("init"));
}

TEST_P(DialogContract, KeepsWhatHiddenAndDisabledControlsHold) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IDialog& dialog = *controller.dialog();
  dialog.SetText(IDC_CONTRACT_HIDDEN_EDIT, "hidden");
  dialog.SetText(IDC_CONTRACT_DISABLED_EDIT, "disabled");
  dialog.SetCheck(IDC_CONTRACT_DISABLED_CHECK, CheckState::kChecked);
  dialog.ListBox(IDC_CONTRACT_DISABLED_LIST).Add("row");
  EXPECT_EQ(dialog.Text(IDC_CONTRACT_HIDDEN_EDIT), "hidden");
  EXPECT_EQ(dialog.Text(IDC_CONTRACT_DISABLED_EDIT), "disabled");
  EXPECT_EQ(dialog.Check(IDC_CONTRACT_DISABLED_CHECK), CheckState::kChecked);
  EXPECT_EQ(dialog.ListBox(IDC_CONTRACT_DISABLED_LIST).Count(), 1U);
  EXPECT_THAT(controller.events(), ElementsAre("init", "edited 1007", "edited 1006"));
}

TEST_P(DialogContract, MeasuresInnerWidths) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  const IDialog& dialog = *controller.dialog();
  EXPECT_GT(dialog.ClientWidth(IDC_CONTRACT_PLAIN_LIST), 0);
  EXPECT_GT(dialog.ClientWidth(IDC_CONTRACT_SORTED_LIST),
            dialog.ClientWidth(IDC_CONTRACT_PLAIN_LIST));
  EXPECT_GT(dialog.ClientWidth(IDC_CONTRACT_LIST_VIEW),
            dialog.ClientWidth(IDC_CONTRACT_SORTED_LIST));
  EXPECT_EQ(dialog.ClientWidth(IDC_CONTRACT_NONE), 0);
}

TEST_P(DialogContract, APageWithoutASheetIgnoresMarksAndEnds) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  controller.dialog()->SetPageModified(true);
  controller.dialog()->SetPageModified(false);
  controller.dialog()->End(kDialogOk);
  EXPECT_THAT(controller.TakeEvents(), ElementsAre("init"));
  open->User().Click(IDC_CONTRACT_BUTTON);
  EXPECT_THAT(controller.events(), ElementsAre("clicked 1020"));
}

}  // namespace
}  // namespace pelora::contract
