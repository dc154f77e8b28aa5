// SPDX-License-Identifier: Apache-2.0
// Texts of labels and captions, edit controls, and what is typed into them.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "tests/contract/contract_ids.h"
#include "tests/contract/dialog_contract.h"
#include "tests/contract/recording_controller.h"

namespace pelora::contract {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_P(DialogContract, AProgramsTextIsReportedBeforeTheCallReturns) {
  RecordingController controller;
  std::vector<std::string> seen;
  controller.on_command = [&](IDialog& dialog, ControlId id, ControlNotification) {
    seen.push_back(dialog.Text(id));
  };
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IDialog& dialog = *controller.dialog();
  (void)controller.TakeEvents();
  dialog.SetText(IDC_CONTRACT_EDIT, "first");
  EXPECT_THAT(controller.TakeEvents(), ElementsAre("edited 1003"));
  EXPECT_THAT(seen, ElementsAre("first"));
  EXPECT_EQ(dialog.Text(IDC_CONTRACT_EDIT), "first");
}

TEST_P(DialogContract, AProgramsTextIsReportedAlsoWhenItIsTheSame) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  (void)controller.TakeEvents();
  for (const char* text : {"", "same", "same", "", ""}) {
    controller.dialog()->SetText(IDC_CONTRACT_EDIT, text);
    EXPECT_EQ(controller.dialog()->Text(IDC_CONTRACT_EDIT), text);
    EXPECT_THAT(controller.TakeEvents(), ElementsAre("edited 1003"));
  }
}

TEST_P(DialogContract, AProgramsTextIsReportedWhileTheDialogIsBeingSetUp) {
  RecordingController controller;
  std::vector<std::string> during;
  controller.on_init = [&](IDialog& dialog) {
    (void)controller.TakeEvents();
    dialog.SetText(IDC_CONTRACT_NUMBER_EDIT, "12");
    during = controller.TakeEvents();
  };
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  EXPECT_THAT(during, ElementsAre("edited 1004"));
  EXPECT_THAT(controller.events(), IsEmpty());
}

TEST_P(DialogContract, EveryEditControlTakesEveryTextFromAProgram) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IDialog& dialog = *controller.dialog();
  for (const std::string& text : {std::string("letters"), std::string("Grüße & 漢字 \U0001F4EE"),
                                  std::string("a\tb"), std::string(2000, 'x')}) {
    for (const ControlId id :
         {IDC_CONTRACT_EDIT, IDC_CONTRACT_NUMBER_EDIT, IDC_CONTRACT_READONLY_EDIT,
          IDC_CONTRACT_DISABLED_EDIT, IDC_CONTRACT_HIDDEN_EDIT}) {
      (void)controller.TakeEvents();
      dialog.SetText(id, text);
      EXPECT_EQ(dialog.Text(id), text) << id;
      EXPECT_THAT(controller.TakeEvents(), ElementsAre("edited " + std::to_string(id)));
    }
  }
}

TEST_P(DialogContract, LabelsAndCaptionsChangeWithoutAReport) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IDialog& dialog = *controller.dialog();
  for (const ControlId id : {IDC_CONTRACT_LABEL, IDC_CONTRACT_GROUP, IDC_CONTRACT_CHECK,
                             IDC_CONTRACT_BUTTON, IDC_CONTRACT_HIDDEN_BUTTON}) {
    dialog.SetText(id, "&New täxt && more");
    EXPECT_EQ(dialog.Text(id), "&New täxt && more") << id;
  }
  EXPECT_THAT(controller.events(), ElementsAre("init"));
}

TEST_P(DialogContract, EachCharacterTypedIsReported) {
  RecordingController controller;
  std::vector<std::string> seen;
  controller.on_command = [&](IDialog& dialog, ControlId id, ControlNotification) {
    seen.push_back(dialog.Text(id));
  };
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  controller.dialog()->SetText(IDC_CONTRACT_EDIT, "x");
  (void)controller.TakeEvents();
  seen.clear();
  open->User().Type(IDC_CONTRACT_EDIT, "a ü");
  EXPECT_THAT(controller.events(), ElementsAre("edited 1003", "edited 1003", "edited 1003"));
  EXPECT_THAT(seen, ElementsAre("xa", "xa ", "xa ü"));
}

TEST_P(DialogContract, ErasingATextIsReportedOnce) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  controller.dialog()->SetText(IDC_CONTRACT_EDIT, "several letters");
  (void)controller.TakeEvents();
  open->User().Erase(IDC_CONTRACT_EDIT);
  EXPECT_EQ(controller.dialog()->Text(IDC_CONTRACT_EDIT), "");
  EXPECT_THAT(controller.events(), ElementsAre("edited 1003"));
}

TEST_P(DialogContract, ANumberFieldTakesDigitsOnlyFromTheUser) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  (void)controller.TakeEvents();
  open->User().Type(IDC_CONTRACT_NUMBER_EDIT, "-1a 2.");
  EXPECT_EQ(controller.dialog()->Text(IDC_CONTRACT_NUMBER_EDIT), "12");
  EXPECT_THAT(controller.events(), ElementsAre("edited 1004", "edited 1004"));
}

TEST_P(DialogContract, ANumberFieldWithOtherTextCanStillBeTypedInto) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  controller.dialog()->SetText(IDC_CONTRACT_NUMBER_EDIT, "abc");
  (void)controller.TakeEvents();
  open->User().Type(IDC_CONTRACT_NUMBER_EDIT, "7");
  EXPECT_EQ(controller.dialog()->Text(IDC_CONTRACT_NUMBER_EDIT), "abc7");
  EXPECT_THAT(controller.events(), ElementsAre("edited 1004"));
}

TEST_P(DialogContract, AReadOnlyFieldTakesNothingFromTheUser) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  controller.dialog()->SetText(IDC_CONTRACT_READONLY_EDIT, "fixed");
  (void)controller.TakeEvents();
  open->User().Type(IDC_CONTRACT_READONLY_EDIT, "x");
  open->User().Erase(IDC_CONTRACT_READONLY_EDIT);
  EXPECT_EQ(controller.dialog()->Text(IDC_CONTRACT_READONLY_EDIT), "fixed");
  EXPECT_THAT(controller.events(), IsEmpty());
}

TEST_P(DialogContract, DisabledAndHiddenFieldsTakeNothingFromTheUser) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IDialog& dialog = *controller.dialog();
  (void)controller.TakeEvents();
  open->User().Type(IDC_CONTRACT_DISABLED_EDIT, "x");
  open->User().Type(IDC_CONTRACT_HIDDEN_EDIT, "x");
  EXPECT_EQ(dialog.Text(IDC_CONTRACT_DISABLED_EDIT), "");
  EXPECT_EQ(dialog.Text(IDC_CONTRACT_HIDDEN_EDIT), "");
  EXPECT_THAT(controller.TakeEvents(), IsEmpty());

  dialog.SetEnabled(IDC_CONTRACT_DISABLED_EDIT, true);
  dialog.SetShown(IDC_CONTRACT_HIDDEN_EDIT, true);
  open->User().Type(IDC_CONTRACT_DISABLED_EDIT, "x");
  open->User().Type(IDC_CONTRACT_HIDDEN_EDIT, "y");
  EXPECT_EQ(dialog.Text(IDC_CONTRACT_DISABLED_EDIT), "x");
  EXPECT_EQ(dialog.Text(IDC_CONTRACT_HIDDEN_EDIT), "y");
  EXPECT_THAT(controller.events(), ElementsAre("edited 1006", "edited 1007"));
}

TEST_P(DialogContract, AControllerMaySetAnotherFieldWhileItIsTold) {
  RecordingController controller;
  controller.on_command = [](IDialog& dialog, ControlId id, ControlNotification) {
    if (id == IDC_CONTRACT_EDIT) dialog.SetText(IDC_CONTRACT_READONLY_EDIT, dialog.Text(id));
  };
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  (void)controller.TakeEvents();
  open->User().Type(IDC_CONTRACT_EDIT, "a");
  EXPECT_EQ(controller.dialog()->Text(IDC_CONTRACT_READONLY_EDIT), "a");
  EXPECT_THAT(controller.events(), ElementsAre("edited 1003", "edited 1005"));
}

}  // namespace
}  // namespace pelora::contract
