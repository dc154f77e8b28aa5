// SPDX-License-Identifier: Apache-2.0
// List views.
#include <gmock/gmock.h>

#include "tests/contract/contract_ids.h"
#include "tests/contract/dialog_contract.h"
#include "tests/contract/recording_controller.h"

namespace pelora::contract {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

constexpr ControlId kView = IDC_CONTRACT_LIST_VIEW;

/// Two columns, four rows: "a" to "d", each with "state" beside it.
void Fill(IDialog& dialog) {
  IListView& view = dialog.ListView(kView);
  view.SetFullRowSelect(true);
  view.InsertColumn(0, "Feature", dialog.ClientWidth(kView) / 2);
  view.InsertColumn(1, "Status", dialog.ClientWidth(kView) / 2);
  for (const char* text : {"a", "b", "c", "d"}) {
    const RowIndex row = view.RowCount();
    view.InsertRow(row, text);
    view.SetText(row, 1, "state");
  }
}

TEST_P(DialogContract, AListViewHoldsTextsUnderItsColumns) {
  RecordingController controller;
  controller.on_init = Fill;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IListView& view = controller.dialog()->ListView(kView);
  ASSERT_EQ(view.RowCount(), 4U);
  EXPECT_EQ(view.Text(2, 0), "c");
  EXPECT_EQ(view.Text(2, 1), "state");
  view.SetText(2, 1, "Enabled on server 'arc1' & 'ärc2'");
  view.SetText(2, 0, "C");
  EXPECT_EQ(view.Text(2, 0), "C");
  EXPECT_EQ(view.Text(2, 1), "Enabled on server 'arc1' & 'ärc2'");
  EXPECT_EQ(view.Text(3, 1), "state");
  EXPECT_THAT(controller.events(), ElementsAre("init"));
}

TEST_P(DialogContract, AListViewRowWithoutASecondTextHasAnEmptyOne) {
  RecordingController controller;
  controller.on_init = Fill;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IListView& view = controller.dialog()->ListView(kView);
  view.InsertRow(4, "e");
  EXPECT_EQ(view.Text(4, 0), "e");
  EXPECT_EQ(view.Text(4, 1), "");
}

TEST_P(DialogContract, AListViewRowIsInsertedBeforeTheOneThatStoodThere) {
  RecordingController controller;
  controller.on_init = Fill;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IListView& view = controller.dialog()->ListView(kView);
  view.SetSelected(1, true);
  view.InsertRow(1, "new");
  ASSERT_EQ(view.RowCount(), 5U);
  EXPECT_EQ(view.Text(0, 0), "a");
  EXPECT_EQ(view.Text(1, 0), "new");
  EXPECT_EQ(view.Text(2, 0), "b");
  EXPECT_EQ(view.Text(2, 1), "state");
  EXPECT_FALSE(view.IsSelected(1));
  EXPECT_TRUE(view.IsSelected(2));
}

TEST_P(DialogContract, AProgramsSelectionInAListViewIsReported) {
  RecordingController controller;
  controller.on_init = Fill;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IListView& view = controller.dialog()->ListView(kView);
  EXPECT_THAT(controller.TakeEvents(), ElementsAre("init"));
  view.SetSelected(2, true);
  EXPECT_THAT(controller.TakeEvents(), ElementsAre("row 2 of 1050 on"));
  view.SetSelected(0, true);
  EXPECT_THAT(controller.TakeEvents(), ElementsAre("row 0 of 1050 on"));
  EXPECT_TRUE(view.IsSelected(0));
  EXPECT_FALSE(view.IsSelected(1));
  EXPECT_TRUE(view.IsSelected(2));
  view.SetSelected(2, false);
  EXPECT_THAT(controller.TakeEvents(), ElementsAre("row 2 of 1050 off"));
  EXPECT_FALSE(view.IsSelected(2));
}

TEST_P(DialogContract, ASelectionThatStandsAlreadyIsNotReportedAgain) {
  RecordingController controller;
  controller.on_init = Fill;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IListView& view = controller.dialog()->ListView(kView);
  view.SetSelected(2, true);
  (void)controller.TakeEvents();
  view.SetSelected(2, true);
  view.SetSelected(1, false);
  EXPECT_THAT(controller.events(), IsEmpty());
}

TEST_P(DialogContract, TheUsersSelectionInAListViewIsReported) {
  RecordingController controller;
  controller.on_init = Fill;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  const IListView& view = controller.dialog()->ListView(kView);
  (void)controller.TakeEvents();
  open->User().ClickListViewCell(kView, 1, 0, false);
  EXPECT_THAT(controller.TakeEvents(), ElementsAre("row 1 of 1050 on"));
  open->User().ClickListViewCell(kView, 3, 0, false);
  EXPECT_THAT(controller.TakeEvents(),
              UnorderedElementsAre("row 1 of 1050 off", "row 3 of 1050 on"));
  open->User().ClickListViewCell(kView, 0, 0, true);
  EXPECT_THAT(controller.TakeEvents(), ElementsAre("row 0 of 1050 on"));
  EXPECT_TRUE(view.IsSelected(3));
  open->User().ClickListViewCell(kView, 3, 0, true);
  EXPECT_THAT(controller.TakeEvents(), ElementsAre("row 3 of 1050 off"));
  open->User().ClickListViewCell(kView, 4, 0, false);
  EXPECT_THAT(controller.TakeEvents(), ElementsAre("row 0 of 1050 off"));
}

TEST_P(DialogContract, AListViewWithFullRowsIsSelectedInAnyColumn) {
  RecordingController controller;
  controller.on_init = Fill;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  (void)controller.TakeEvents();
  open->User().ClickListViewCell(kView, 2, 1, false);
  EXPECT_THAT(controller.events(), ElementsAre("row 2 of 1050 on"));
}

TEST_P(DialogContract, ADoubleClickSelectsItsRowAndIsReported) {
  RecordingController controller;
  controller.on_init = Fill;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  (void)controller.TakeEvents();
  open->User().DoubleClickListViewCell(kView, 1, 0);
  EXPECT_THAT(controller.TakeEvents(),
              ElementsAre("row 1 of 1050 on", "double click on 1 of 1050"));
  open->User().DoubleClickListViewCell(kView, 1, 1);
  EXPECT_THAT(controller.TakeEvents(), ElementsAre("double click on 1 of 1050"));
}

TEST_P(DialogContract, ADoubleClickOutsideTheRowsIsNotReported) {
  RecordingController controller;
  controller.on_init = Fill;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  (void)controller.TakeEvents();
  open->User().DoubleClickListViewCell(kView, 4, 0);
  EXPECT_THAT(controller.events(), IsEmpty());
}

TEST_P(DialogContract, BesideTheLastColumnThereIsNoRow) {
  RecordingController controller;
  controller.on_init = [](IDialog& dialog) {
    IListView& view = dialog.ListView(kView);
    view.SetFullRowSelect(true);
    view.InsertColumn(0, "Feature", dialog.ClientWidth(kView) / 4);
    view.InsertColumn(1, "Status", dialog.ClientWidth(kView) / 4);
    view.InsertRow(0, "a");
    view.InsertRow(1, "b");
  };
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  open->User().ClickListViewCell(kView, 1, 1, false);
  (void)controller.TakeEvents();
  open->User().DoubleClickListViewCell(kView, 1, 2);
  EXPECT_THAT(controller.events(), ElementsAre("row 1 of 1050 off"));
}

TEST_P(DialogContract, ADoubleClickOfTheRightButtonIsNone) {
  RecordingController controller;
  controller.on_init = Fill;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  (void)controller.TakeEvents();
  open->User().RightDoubleClickListViewCell(kView, 1, 0);
  EXPECT_THAT(controller.events(), ElementsAre("row 1 of 1050 on"));
}

TEST_P(DialogContract, ColumnsAreAsWideAsTheyWereMade) {
  RecordingController controller;
  controller.on_init = Fill;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  const int client_width = controller.dialog()->ClientWidth(kView);
  EXPECT_GT(client_width, 100);
  EXPECT_EQ(open->User().ColumnWidth(kView, 0), client_width / 2);
  EXPECT_EQ(open->User().ColumnWidth(kView, 1), client_width / 2);
}

TEST_P(DialogContract, TheHeadsOfColumnsSortNothing) {
  RecordingController controller;
  controller.on_init = [](IDialog& dialog) {
    Fill(dialog);
    dialog.ListView(kView).InsertRow(0, "z");
  };
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  const IListView& view = controller.dialog()->ListView(kView);
  open->User().ClickListViewCell(kView, 2, 0, false);
  (void)controller.TakeEvents();
  open->User().ClickListViewHead(kView, 0);
  open->User().ClickListViewHead(kView, 0);
  open->User().ClickListViewHead(kView, 1);
  EXPECT_THAT(controller.events(), IsEmpty());
  EXPECT_EQ(view.Text(0, 0), "z");
  EXPECT_EQ(view.Text(4, 0), "d");
}

TEST_P(DialogContract, ASelectionIsShownWhereverTheFocusIs) {
  RecordingController controller;
  controller.on_init = Fill;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  controller.dialog()->ListView(kView).SetSelected(2, true);
  DialogPlayer& user = open->User();
  user.Type(IDC_CONTRACT_EDIT, "x");
  EXPECT_TRUE(user.IsDrawnSelected(kView, 2));
  EXPECT_FALSE(user.IsDrawnSelected(kView, 1));
}

TEST_P(DialogContract, ADisabledListViewTakesNothingFromTheUser) {
  RecordingController controller;
  controller.on_init = Fill;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  controller.dialog()->SetEnabled(kView, false);
  (void)controller.TakeEvents();
  open->User().ClickListViewCell(kView, 1, 0, false);
  open->User().DoubleClickListViewCell(kView, 1, 0);
  EXPECT_THAT(controller.events(), IsEmpty());
}

TEST_P(DialogContract, TheControllerIsAskedEachTimeACellIsDrawn) {
  RecordingController controller;
  controller.on_init = Fill;
  RowIndex muted_row = 2;
  controller.text_role = [&](RowIndex row, std::size_t column) {
    return row == muted_row && column == 1 ? TextRole::kMuted : TextRole::kNormal;
  };
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  DialogPlayer& user = open->User();
  EXPECT_EQ(user.DrawnRole(kView, 2, 1), TextRole::kMuted);
  EXPECT_EQ(user.DrawnRole(kView, 2, 0), TextRole::kNormal);
  EXPECT_EQ(user.DrawnRole(kView, 1, 1), TextRole::kNormal);
  muted_row = 1;
  EXPECT_EQ(user.DrawnRole(kView, 2, 1), TextRole::kNormal);
  EXPECT_EQ(user.DrawnRole(kView, 1, 1), TextRole::kMuted);
}

}  // namespace
}  // namespace pelora::contract
