// SPDX-License-Identifier: Apache-2.0
// Modal dialogs.
#include <gmock/gmock.h>

#include <string>

#include "tests/contract/contract_ids.h"
#include "tests/contract/dialog_contract.h"
#include "tests/contract/recording_controller.h"

namespace pelora::contract {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t kNotMade = -1;

/// Ends the dialog on OK and on Cancel, with the button's own number.
void EndOnButtons(IDialog& dialog, ControlId id, ControlNotification notification) {
  const auto button = static_cast<std::int32_t>(id);
  if (notification != ControlNotification::kClicked) return;
  if (button == kDialogOk || button == kDialogCancel) dialog.End(button);
}

TEST_P(DialogContract, AModalDialogGivesTheResultItWasEndedWith) {
  for (const std::int32_t button : {kDialogOk, kDialogCancel}) {
    RecordingController controller;
    controller.on_command = EndOnButtons;
    Driver().PlayNext([&](DialogPlayer& user) { user.Click(static_cast<ControlId>(button)); });
    EXPECT_EQ(Driver().ModalDialogs().Run(IDD_CONTRACT_MODAL, nullptr, controller), button);
    EXPECT_THAT(controller.events(),
                ElementsAre("init", "clicked " + std::to_string(button), "destroy"));
  }
}

TEST_P(DialogContract, AModalDialogIsNotMadeWithoutATemplate) {
  RecordingController controller;
  EXPECT_EQ(Driver().ModalDialogs().Run(IDD_CONTRACT_NONE, nullptr, controller), kNotMade);
  EXPECT_THAT(controller.events(), IsEmpty());
}

TEST_P(DialogContract, AModalDialogStandsUntilItIsEnded) {
  RecordingController controller;
  controller.on_init = [](IDialog& dialog) { dialog.SetText(IDC_CONTRACT_EDIT, "held"); };
  std::string kept;
  controller.on_command = [&](IDialog& dialog, ControlId id, ControlNotification notification) {
    if (id == IDC_CONTRACT_BUTTON) dialog.End(42);
    // An ended dialog can still be read by whoever ended it.
    if (notification == ControlNotification::kClicked) kept = dialog.Text(IDC_CONTRACT_EDIT);
  };
  Driver().PlayNext([&](DialogPlayer& user) {
    EXPECT_THAT(controller.TakeEvents(), ElementsAre("init", "edited 1003"));
    user.Type(IDC_CONTRACT_EDIT, "!");
    user.Click(static_cast<ControlId>(kDialogOk));
    EXPECT_NE(controller.dialog(), nullptr);
    EXPECT_THAT(controller.TakeEvents(), ElementsAre("edited 1003", "clicked 1"));
    user.Click(IDC_CONTRACT_BUTTON);
  });
  EXPECT_EQ(Driver().ModalDialogs().Run(IDD_CONTRACT_MODAL, nullptr, controller), 42);
  EXPECT_EQ(kept, "held!");
  EXPECT_THAT(controller.events(), ElementsAre("clicked 1020", "destroy"));
}

TEST_P(DialogContract, AModalDialogEndsOnlyAfterTheHandlerThatEndsIt) {
  RecordingController controller;
  controller.on_command = [&](IDialog& dialog, ControlId, ControlNotification) {
    dialog.End(kDialogOk);
    EXPECT_THAT(controller.events(), ElementsAre("init", "clicked 1"));
    EXPECT_EQ(dialog.Text(IDC_CONTRACT_BUTTON), "&More");
  };
  Driver().PlayNext([](DialogPlayer& user) { user.Click(static_cast<ControlId>(kDialogOk)); });
  EXPECT_EQ(Driver().ModalDialogs().Run(IDD_CONTRACT_MODAL, nullptr, controller), kDialogOk);
}

TEST_P(DialogContract, AModalDialogMayBeEndedBeforeItIsShown) {
  RecordingController controller;
  controller.on_init = [](IDialog& dialog) { dialog.End(7); };
  EXPECT_EQ(Driver().ModalDialogs().Run(IDD_CONTRACT_MODAL, nullptr, controller), 7);
  EXPECT_THAT(controller.events(), ElementsAre("init", "destroy"));
}

TEST_P(DialogContract, ClosingAModalDialogIsAClickOnCancel) {
  RecordingController controller;
  controller.on_command = EndOnButtons;
  Driver().PlayNext([](DialogPlayer& user) { user.CloseWindow(); });
  EXPECT_EQ(Driver().ModalDialogs().Run(IDD_CONTRACT_MODAL, nullptr, controller), kDialogCancel);
  EXPECT_THAT(controller.events(), ElementsAre("init", "clicked 2", "destroy"));
}

TEST_P(DialogContract, ClosingAModalDialogLeavesItToItsController) {
  RecordingController controller;
  controller.on_command = [](IDialog& dialog, ControlId id, ControlNotification) {
    if (id == IDC_CONTRACT_BUTTON) dialog.End(kDialogOk);
  };
  Driver().PlayNext([&](DialogPlayer& user) {
    user.CloseWindow();
    EXPECT_NE(controller.dialog(), nullptr);
    user.Click(IDC_CONTRACT_BUTTON);
  });
  EXPECT_EQ(Driver().ModalDialogs().Run(IDD_CONTRACT_MODAL, nullptr, controller), kDialogOk);
  EXPECT_THAT(controller.events(), ElementsAre("init", "clicked 2", "clicked 1020", "destroy"));
}

TEST_P(DialogContract, EnterIsAClickOnTheDefaultButton) {
  RecordingController controller;
  controller.on_command = EndOnButtons;
  Driver().PlayNext([](DialogPlayer& user) { user.PressEnter(); });
  EXPECT_EQ(Driver().ModalDialogs().Run(IDD_CONTRACT_MODAL, nullptr, controller), kDialogOk);
  EXPECT_THAT(controller.events(), ElementsAre("init", "clicked 1", "destroy"));
}

TEST_P(DialogContract, AModalDialogMayRunAnother) {
  RecordingController outer;
  RecordingController inner;
  inner.on_command = EndOnButtons;
  std::int32_t inner_result = 0;
  outer.on_command = [&](IDialog& dialog, ControlId id, ControlNotification notification) {
    if (id == IDC_CONTRACT_BUTTON) {
      inner_result = Driver().ModalDialogs().Run(IDD_CONTRACT_MODAL, &dialog, inner);
    }
    EndOnButtons(dialog, id, notification);
  };
  Driver().PlayNext([](DialogPlayer& user) {
    user.Click(IDC_CONTRACT_BUTTON);
    user.Click(static_cast<ControlId>(kDialogOk));
  });
  Driver().PlayNext([](DialogPlayer& user) { user.Click(static_cast<ControlId>(kDialogCancel)); });
  EXPECT_EQ(Driver().ModalDialogs().Run(IDD_CONTRACT_MODAL, nullptr, outer), kDialogOk);
  EXPECT_EQ(inner_result, kDialogCancel);
  EXPECT_THAT(inner.events(), ElementsAre("init", "clicked 2", "destroy"));
  EXPECT_THAT(outer.events(), ElementsAre("init", "clicked 1020", "clicked 1", "destroy"));
}

TEST_P(DialogContract, AModalDialogMayBeRunFromAPage) {
  RecordingController page;
  RecordingController modal;
  modal.on_command = EndOnButtons;
  std::int32_t result = 0;
  page.on_command = [&](IDialog& dialog, ControlId, ControlNotification) {
    result = Driver().ModalDialogs().Run(IDD_CONTRACT_MODAL, &dialog, modal);
    dialog.SetText(IDC_CONTRACT_LABEL, "back");
  };
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, page);
  Driver().PlayNext([](DialogPlayer& user) { user.Click(static_cast<ControlId>(kDialogOk)); });
  open->User().Click(IDC_CONTRACT_BUTTON);
  EXPECT_EQ(result, kDialogOk);
  EXPECT_EQ(page.dialog()->Text(IDC_CONTRACT_LABEL), "back");
}

}  // namespace
}  // namespace pelora::contract
