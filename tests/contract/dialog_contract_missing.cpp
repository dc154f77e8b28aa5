// SPDX-License-Identifier: Apache-2.0
// Controls that the template lacks, and controls of another kind than the one asked for.
#include <gmock/gmock.h>

#include <array>

#include "tests/contract/contract_ids.h"
#include "tests/contract/dialog_contract.h"
#include "tests/contract/recording_controller.h"

namespace pelora::contract {
namespace {

using testing::ElementsAre;

void ExpectNoListBox(IListBox& list) {
  EXPECT_EQ(list.Add("row"), std::nullopt);
  EXPECT_EQ(list.Count(), 0U);
  EXPECT_EQ(list.Text(0), "");
  list.SetData(0, &list);
  EXPECT_EQ(list.Data(0), nullptr);
  list.Select(0);
  EXPECT_EQ(list.Selection(), std::nullopt);
  EXPECT_FALSE(list.Remove(0));
  list.SetTabStops(std::array{10, 20});
  list.Clear();
}

void ExpectNoComboBox(IComboBox& combo) {
  combo.Add("row");
  EXPECT_EQ(combo.Count(), 0U);
  EXPECT_EQ(combo.Text(0), "");
  combo.Select(0);
  EXPECT_EQ(combo.Selection(), std::nullopt);
  combo.Clear();
}

void ExpectNoListView(IListView& view) {
  view.SetFullRowSelect(true);
  view.InsertColumn(0, "Column", 10);
  view.InsertRow(0, "row");
  EXPECT_EQ(view.RowCount(), 0U);
  view.SetText(0, 0, "text");
  EXPECT_EQ(view.Text(0, 0), "");
  view.SetSelected(0, true);
  EXPECT_FALSE(view.IsSelected(0));
}

TEST_P(DialogContract, AMissingControlTakesEverythingAndDoesNothing) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IDialog& dialog = *controller.dialog();
  dialog.SetText(IDC_CONTRACT_NONE, "text");
  EXPECT_EQ(dialog.Text(IDC_CONTRACT_NONE), "");
  dialog.SetEnabled(IDC_CONTRACT_NONE, true);
  EXPECT_FALSE(dialog.IsEnabled(IDC_CONTRACT_NONE));
  dialog.SetShown(IDC_CONTRACT_NONE, true);
  EXPECT_FALSE(dialog.IsShown(IDC_CONTRACT_NONE));
  dialog.SetCheck(IDC_CONTRACT_NONE, CheckState::kChecked);
  EXPECT_EQ(dialog.Check(IDC_CONTRACT_NONE), CheckState::kUnchecked);
  dialog.SetStyle(IDC_CONTRACT_NONE, ButtonStyle::kAutoThreeState);
  EXPECT_EQ(dialog.Style(IDC_CONTRACT_NONE), ButtonStyle::kAutoCheckBox);
  EXPECT_EQ(dialog.ClientWidth(IDC_CONTRACT_NONE), 0);
  EXPECT_THAT(controller.events(), ElementsAre("init"));
}

TEST_P(DialogContract, MissingListsAreEmptyAndRefuseRows) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IDialog& dialog = *controller.dialog();
  ExpectNoListBox(dialog.ListBox(IDC_CONTRACT_NONE));
  ExpectNoComboBox(dialog.ComboBox(IDC_CONTRACT_NONE));
  ExpectNoListView(dialog.ListView(IDC_CONTRACT_NONE));
  EXPECT_THAT(controller.events(), ElementsAre("init"));
}

TEST_P(DialogContract, ControlsOfAnotherKindAreAsGoodAsMissing) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IDialog& dialog = *controller.dialog();
  for (const ControlId id : {IDC_CONTRACT_EDIT, IDC_CONTRACT_CHECK, IDC_CONTRACT_LABEL}) {
    SCOPED_TRACE(id);
    ExpectNoListBox(dialog.ListBox(id));
    ExpectNoComboBox(dialog.ComboBox(id));
    ExpectNoListView(dialog.ListView(id));
  }
  ExpectNoListBox(dialog.ListBox(IDC_CONTRACT_COMBO));
  ExpectNoListBox(dialog.ListBox(IDC_CONTRACT_LIST_VIEW));
  ExpectNoComboBox(dialog.ComboBox(IDC_CONTRACT_SORTED_LIST));
  ExpectNoListView(dialog.ListView(IDC_CONTRACT_SORTED_LIST));
  for (const ControlId id : {IDC_CONTRACT_EDIT, IDC_CONTRACT_LABEL, IDC_CONTRACT_BUTTON,
                             IDC_CONTRACT_SORTED_LIST, IDC_CONTRACT_GROUP}) {
    SCOPED_TRACE(id);
    dialog.SetCheck(id, CheckState::kChecked);
    EXPECT_EQ(dialog.Check(id), CheckState::kUnchecked);
    dialog.SetStyle(id, ButtonStyle::kAutoThreeState);
    EXPECT_EQ(dialog.Check(id), CheckState::kUnchecked);
  }
  open->User().Click(IDC_CONTRACT_BUTTON);
  EXPECT_EQ(dialog.Check(IDC_CONTRACT_BUTTON), CheckState::kUnchecked);
  EXPECT_THAT(controller.events(), ElementsAre("init", "clicked 1020"));
}

}  // namespace
}  // namespace pelora::contract
