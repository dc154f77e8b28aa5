// SPDX-License-Identifier: Apache-2.0
// Buttons and check boxes.
#include <gmock/gmock.h>

#include <vector>

#include "tests/contract/contract_ids.h"
#include "tests/contract/dialog_contract.h"
#include "tests/contract/recording_controller.h"

namespace pelora::contract {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr CheckState kOff = CheckState::kUnchecked;
constexpr CheckState kOn = CheckState::kChecked;
constexpr CheckState kMixed = CheckState::kIndeterminate;

/// Clicks a box and gives the state that the controller saw when it was told.
std::vector<CheckState> StatesSeen(DialogDriver& driver, ControlId id, int clicks,
                                   const std::function<void(IDialog&)>& set_up = {}) {
  RecordingController controller;
  std::vector<CheckState> seen;
  controller.on_init = set_up;
  controller.on_command = [&](IDialog& dialog, ControlId clicked, ControlNotification told) {
    EXPECT_EQ(clicked, id);
    EXPECT_EQ(told, ControlNotification::kClicked);
    seen.push_back(dialog.Check(id));
  };
  const auto open = driver.Open(IDD_CONTRACT_PAGE, controller);
  for (int click = 0; click < clicks; ++click) open->User().Click(id);
  EXPECT_EQ(controller.dialog()->Check(id), seen.back());
  return seen;
}

TEST_P(DialogContract, AButtonReportsItsClick) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  (void)controller.TakeEvents();
  open->User().Click(IDC_CONTRACT_BUTTON);
  EXPECT_THAT(controller.TakeEvents(), ElementsAre("clicked 1020"));
  open->User().Click(IDC_CONTRACT_BUTTON);
  EXPECT_THAT(controller.TakeEvents(), ElementsAre("clicked 1020"));
}

TEST_P(DialogContract, DisabledAndHiddenButtonsReportNothing) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IDialog& dialog = *controller.dialog();
  (void)controller.TakeEvents();
  open->User().Click(IDC_CONTRACT_DISABLED_BUTTON);
  open->User().Click(IDC_CONTRACT_HIDDEN_BUTTON);
  open->User().Click(IDC_CONTRACT_DISABLED_CHECK);
  EXPECT_EQ(dialog.Check(IDC_CONTRACT_DISABLED_CHECK), kOff);
  EXPECT_THAT(controller.TakeEvents(), IsEmpty());

  dialog.SetEnabled(IDC_CONTRACT_DISABLED_BUTTON, true);
  dialog.SetShown(IDC_CONTRACT_HIDDEN_BUTTON, true);
  dialog.SetEnabled(IDC_CONTRACT_DISABLED_CHECK, true);
  dialog.SetEnabled(IDC_CONTRACT_BUTTON, false);
  open->User().Click(IDC_CONTRACT_DISABLED_BUTTON);
  open->User().Click(IDC_CONTRACT_HIDDEN_BUTTON);
  open->User().Click(IDC_CONTRACT_DISABLED_CHECK);
  open->User().Click(IDC_CONTRACT_BUTTON);
  EXPECT_EQ(dialog.Check(IDC_CONTRACT_DISABLED_CHECK), kOn);
  EXPECT_THAT(controller.TakeEvents(), ElementsAre("clicked 1021", "clicked 1022", "clicked 1012"));
}

TEST_P(DialogContract, ATwoStateBoxChangesBeforeItsClickIsReported) {
  EXPECT_THAT(StatesSeen(Driver(), IDC_CONTRACT_CHECK, 3), ElementsAre(kOn, kOff, kOn));
}

TEST_P(DialogContract, AThreeStateBoxCyclesBeforeItsClickIsReported) {
  EXPECT_THAT(StatesSeen(Driver(), IDC_CONTRACT_THREE_STATE, 4),
              ElementsAre(kOn, kMixed, kOff, kOn));
}

TEST_P(DialogContract, ABoxGivenTheOtherStyleCyclesAsTheOther) {
  EXPECT_THAT(StatesSeen(Driver(), IDC_CONTRACT_CHECK, 4,
                         [](IDialog& dialog) {
                           dialog.SetStyle(IDC_CONTRACT_CHECK, ButtonStyle::kAutoThreeState);
                         }),
              ElementsAre(kOn, kMixed, kOff, kOn));
  EXPECT_THAT(StatesSeen(Driver(), IDC_CONTRACT_THREE_STATE, 3,
                         [](IDialog& dialog) {
                           dialog.SetStyle(IDC_CONTRACT_THREE_STATE, ButtonStyle::kAutoCheckBox);
                         }),
              ElementsAre(kOn, kOff, kOn));
}

TEST_P(DialogContract, AProgramSetsStatesWithoutAReport) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IDialog& dialog = *controller.dialog();
  for (const CheckState state : {kOn, kOff, kOn, kOn}) {
    dialog.SetCheck(IDC_CONTRACT_CHECK, state);
    EXPECT_EQ(dialog.Check(IDC_CONTRACT_CHECK), state);
  }
  for (const CheckState state : {kMixed, kOn, kMixed, kOff, kOff}) {
    dialog.SetCheck(IDC_CONTRACT_THREE_STATE, state);
    EXPECT_EQ(dialog.Check(IDC_CONTRACT_THREE_STATE), state);
  }
  EXPECT_THAT(controller.events(), ElementsAre("init"));
}

TEST_P(DialogContract, ATwoStateBoxShowsTheIndeterminateStateAsChecked) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  controller.dialog()->SetCheck(IDC_CONTRACT_CHECK, kMixed);
  EXPECT_EQ(controller.dialog()->Check(IDC_CONTRACT_CHECK), kOn);
  controller.dialog()->SetStyle(IDC_CONTRACT_THREE_STATE, ButtonStyle::kAutoCheckBox);
  controller.dialog()->SetCheck(IDC_CONTRACT_THREE_STATE, kMixed);
  EXPECT_EQ(controller.dialog()->Check(IDC_CONTRACT_THREE_STATE), kOn);
}

TEST_P(DialogContract, AChangeOfStyleKeepsTheState) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IDialog& dialog = *controller.dialog();
  for (const CheckState state : {kOff, kOn, kMixed}) {
    dialog.SetStyle(IDC_CONTRACT_CHECK, ButtonStyle::kAutoThreeState);
    EXPECT_EQ(dialog.Style(IDC_CONTRACT_CHECK), ButtonStyle::kAutoThreeState);
    dialog.SetCheck(IDC_CONTRACT_CHECK, state);
    dialog.SetStyle(IDC_CONTRACT_CHECK, ButtonStyle::kAutoCheckBox);
    EXPECT_EQ(dialog.Style(IDC_CONTRACT_CHECK), ButtonStyle::kAutoCheckBox);
    EXPECT_EQ(dialog.Check(IDC_CONTRACT_CHECK), state);
    dialog.SetStyle(IDC_CONTRACT_CHECK, ButtonStyle::kAutoThreeState);
    EXPECT_EQ(dialog.Check(IDC_CONTRACT_CHECK), state);
  }
  EXPECT_THAT(controller.events(), ElementsAre("init"));
}

/// What a tab does with a box that stands for objects that differ: it shows the third state until
/// the first click, and two states from then on.
TEST_P(DialogContract, AnIndeterminateBoxMadeTwoStateByItsFirstClickStaysSo) {
  RecordingController controller;
  std::vector<CheckState> seen;
  controller.on_init = [](IDialog& dialog) {
    dialog.SetStyle(IDC_CONTRACT_CHECK, ButtonStyle::kAutoThreeState);
    dialog.SetCheck(IDC_CONTRACT_CHECK, kMixed);
  };
  controller.on_command = [&](IDialog& dialog, ControlId id, ControlNotification) {
    dialog.SetStyle(id, ButtonStyle::kAutoCheckBox);
    seen.push_back(dialog.Check(id));
  };
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  EXPECT_EQ(controller.dialog()->Check(IDC_CONTRACT_CHECK), kMixed);
  for (int click = 0; click < 4; ++click) open->User().Click(IDC_CONTRACT_CHECK);
  EXPECT_THAT(seen, ElementsAre(kOff, kOn, kOff, kOn));
}

}  // namespace
}  // namespace pelora::contract
