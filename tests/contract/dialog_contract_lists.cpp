// SPDX-License-Identifier: Apache-2.0
// List boxes and drop-down lists.
#include <gmock/gmock.h>

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "tests/contract/contract_ids.h"
#include "tests/contract/dialog_contract.h"
#include "tests/contract/recording_controller.h"

namespace pelora::contract {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

template <class List>
std::vector<std::string> Rows(const List& list) {
  std::vector<std::string> rows;
  for (RowIndex row = 0; row < list.Count(); ++row) rows.push_back(list.Text(row));
  return rows;
}

TEST_P(DialogContract, AListBoxKeepsTheOrderInWhichRowsCame) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IListBox& list = controller.dialog()->ListBox(IDC_CONTRACT_PLAIN_LIST);
  EXPECT_EQ(list.Add("pear"), 0U);
  EXPECT_EQ(list.Add("apple"), 1U);
  EXPECT_EQ(list.Add("pear"), 2U);
  EXPECT_EQ(list.Add(""), 3U);
  EXPECT_EQ(list.Add("Überseehafen & Söhne"), 4U);
  EXPECT_THAT(Rows(list), ElementsAre("pear", "apple", "pear", "", "Überseehafen & Söhne"));
  EXPECT_THAT(controller.events(), ElementsAre("init"));
}

TEST_P(DialogContract, ASortedListBoxPutsRowsInTheirPlaceWhateverTheirCase) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IListBox& list = controller.dialog()->ListBox(IDC_CONTRACT_SORTED_LIST);
  EXPECT_EQ(list.Add("melon"), 0U);
  EXPECT_EQ(list.Add("Apple"), 0U);
  EXPECT_EQ(list.Add("ZEBRA"), 2U);
  EXPECT_EQ(list.Add("banana"), 1U);
  EXPECT_EQ(list.Add("Nut"), 3U);
  EXPECT_EQ(list.Add("7 days"), 0U);
  EXPECT_THAT(Rows(list), ElementsAre("7 days", "Apple", "banana", "melon", "Nut", "ZEBRA"));
}

TEST_P(DialogContract, ASortedListBoxKeepsDuplicatesAndCaseVariants) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IListBox& list = controller.dialog()->ListBox(IDC_CONTRACT_SORTED_LIST);
  for (const char* row : {"b", "a", "B", "a", "c"}) EXPECT_TRUE(list.Add(row).has_value());
  std::vector<std::string> rows = Rows(list);
  ASSERT_EQ(rows.size(), 5U);
  EXPECT_EQ(rows[0], "a");
  EXPECT_EQ(rows[1], "a");
  EXPECT_EQ(rows[4], "c");
  EXPECT_THAT((std::vector{rows[2], rows[3]}), testing::UnorderedElementsAre("b", "B"));
}

TEST_P(DialogContract, ARowsDataGoesWhereTheRowGoes) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IListBox& list = controller.dialog()->ListBox(IDC_CONTRACT_SORTED_LIST);
  std::array<int, 4> marks{};
  const std::array<const char*, 4> texts{"d", "b", "c", "a"};
  for (std::size_t index = 0; index < texts.size(); ++index) {
    const std::optional<RowIndex> row = list.Add(texts.at(index));
    ASSERT_TRUE(row.has_value());
    EXPECT_EQ(list.Data(*row), nullptr);
    list.SetData(*row, &marks.at(index));
  }
  EXPECT_EQ(list.Data(0), &marks[3]);
  EXPECT_EQ(list.Data(1), &marks[1]);
  EXPECT_EQ(list.Data(2), &marks[2]);
  EXPECT_EQ(list.Data(3), &marks[0]);
  EXPECT_TRUE(list.Remove(1));
  EXPECT_EQ(list.Data(0), &marks[3]);
  EXPECT_EQ(list.Data(1), &marks[2]);
  EXPECT_EQ(list.Data(2), &marks[0]);
}

TEST_P(DialogContract, AListBoxRemovesWhatThereIs) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IListBox& list = controller.dialog()->ListBox(IDC_CONTRACT_PLAIN_LIST);
  EXPECT_FALSE(list.Remove(0));
  for (const char* row : {"a", "b", "c"}) EXPECT_TRUE(list.Add(row).has_value());
  EXPECT_FALSE(list.Remove(3));
  EXPECT_TRUE(list.Remove(1));
  EXPECT_THAT(Rows(list), ElementsAre("a", "c"));
  list.Clear();
  EXPECT_EQ(list.Count(), 0U);
  EXPECT_EQ(list.Add("d"), 0U);
  EXPECT_EQ(list.Data(0), nullptr);
  EXPECT_THAT(controller.events(), ElementsAre("init"));
}

TEST_P(DialogContract, AProgramSelectsARowWithoutAReport) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IListBox& list = controller.dialog()->ListBox(IDC_CONTRACT_SORTED_LIST);
  for (const char* row : {"a", "b", "c"}) EXPECT_TRUE(list.Add(row).has_value());
  EXPECT_EQ(list.Selection(), std::nullopt);
  list.Select(2);
  EXPECT_EQ(list.Selection(), 2U);
  list.Select(3);
  EXPECT_EQ(list.Selection(), std::nullopt);
  list.Select(0);
  list.Select(std::nullopt);
  EXPECT_EQ(list.Selection(), std::nullopt);
  EXPECT_THAT(controller.events(), ElementsAre("init"));
}

TEST_P(DialogContract, ASelectionGoesWithItsRow) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IListBox& list = controller.dialog()->ListBox(IDC_CONTRACT_SORTED_LIST);
  for (const char* row : {"b", "d", "f"}) EXPECT_TRUE(list.Add(row).has_value());
  list.Select(1);
  EXPECT_TRUE(list.Remove(0));
  EXPECT_EQ(list.Selection(), 0U);
  EXPECT_TRUE(list.Remove(1));
  EXPECT_EQ(list.Selection(), 0U);
  EXPECT_EQ(list.Add("a"), 0U);
  EXPECT_EQ(list.Selection(), 1U);
  EXPECT_TRUE(list.Remove(1));
  EXPECT_EQ(list.Selection(), std::nullopt);
  list.Select(0);
  list.Clear();
  EXPECT_EQ(list.Selection(), std::nullopt);
  EXPECT_THAT(controller.events(), ElementsAre("init"));
}

TEST_P(DialogContract, TheUsersChoiceInAListBoxIsReported) {
  RecordingController controller;
  std::vector<std::optional<RowIndex>> seen;
  controller.on_command = [&](IDialog& dialog, ControlId id, ControlNotification) {
    seen.push_back(dialog.ListBox(id).Selection());
  };
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IListBox& list = controller.dialog()->ListBox(IDC_CONTRACT_SORTED_LIST);
  for (const char* row : {"a", "b", "c"}) EXPECT_TRUE(list.Add(row).has_value());
  (void)controller.TakeEvents();
  open->User().ClickListRow(IDC_CONTRACT_SORTED_LIST, 1);
  EXPECT_THAT(controller.TakeEvents(), ElementsAre("selected 1030"));
  open->User().ClickListRow(IDC_CONTRACT_SORTED_LIST, 2);
  EXPECT_THAT(controller.TakeEvents(), ElementsAre("selected 1030"));
  EXPECT_THAT(seen, ElementsAre(std::optional<RowIndex>(1), std::optional<RowIndex>(2)));
}

TEST_P(DialogContract, DisabledAndHiddenListsTakeNoChoiceFromTheUser) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IDialog& dialog = *controller.dialog();
  EXPECT_TRUE(dialog.ListBox(IDC_CONTRACT_DISABLED_LIST).Add("a").has_value());
  EXPECT_TRUE(dialog.ListBox(IDC_CONTRACT_PLAIN_LIST).Add("a").has_value());
  dialog.ComboBox(IDC_CONTRACT_DISABLED_COMBO).Add("a");
  dialog.ComboBox(IDC_CONTRACT_COMBO).Add("a");
  dialog.SetShown(IDC_CONTRACT_PLAIN_LIST, false);
  dialog.SetShown(IDC_CONTRACT_COMBO, false);
  (void)controller.TakeEvents();
  open->User().ClickListRow(IDC_CONTRACT_DISABLED_LIST, 0);
  open->User().ClickListRow(IDC_CONTRACT_PLAIN_LIST, 0);
  open->User().ChooseComboRow(IDC_CONTRACT_DISABLED_COMBO, 0);
  open->User().ChooseComboRow(IDC_CONTRACT_COMBO, 0);
  EXPECT_EQ(dialog.ListBox(IDC_CONTRACT_DISABLED_LIST).Selection(), std::nullopt);
  EXPECT_EQ(dialog.ListBox(IDC_CONTRACT_PLAIN_LIST).Selection(), std::nullopt);
  EXPECT_EQ(dialog.ComboBox(IDC_CONTRACT_DISABLED_COMBO).Selection(), std::nullopt);
  EXPECT_EQ(dialog.ComboBox(IDC_CONTRACT_COMBO).Selection(), std::nullopt);
  EXPECT_THAT(controller.events(), IsEmpty());
}

TEST_P(DialogContract, TabStopsLeaveTheRowsTextsAsTheyAre) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IListBox& list = controller.dialog()->ListBox(IDC_CONTRACT_SORTED_LIST);
  EXPECT_EQ(list.Add("left\tright"), 0U);
  list.SetTabStops(std::array{50, 100});
  EXPECT_EQ(list.Text(0), "left\tright");
  EXPECT_THAT(controller.events(), ElementsAre("init"));
}

TEST_P(DialogContract, ADropDownListKeepsTheOrderInWhichRowsCame) {
  RecordingController controller;
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IComboBox& combo = controller.dialog()->ComboBox(IDC_CONTRACT_COMBO);
  for (const char* row : {"room", "Empfänger & Co", "active", "room"}) combo.Add(row);
  EXPECT_THAT(Rows(combo), ElementsAre("room", "Empfänger & Co", "active", "room"));
  EXPECT_EQ(combo.Selection(), std::nullopt);
  combo.Select(2);
  combo.Add("more");
  EXPECT_EQ(combo.Selection(), 2U);
  combo.Select(5);
  EXPECT_EQ(combo.Selection(), std::nullopt);
  combo.Select(0);
  combo.Select(std::nullopt);
  EXPECT_EQ(combo.Selection(), std::nullopt);
  combo.Select(1);
  combo.Clear();
  EXPECT_EQ(combo.Count(), 0U);
  EXPECT_EQ(combo.Selection(), std::nullopt);
  EXPECT_THAT(controller.events(), ElementsAre("init"));
}

TEST_P(DialogContract, TheUsersChoiceInADropDownListIsReported) {
  RecordingController controller;
  std::vector<std::optional<RowIndex>> seen;
  controller.on_command = [&](IDialog& dialog, ControlId id, ControlNotification) {
    seen.push_back(dialog.ComboBox(id).Selection());
  };
  const auto open = Driver().Open(IDD_CONTRACT_PAGE, controller);
  IComboBox& combo = controller.dialog()->ComboBox(IDC_CONTRACT_COMBO);
  for (const char* row : {"a", "b", "c"}) combo.Add(row);
  (void)controller.TakeEvents();
  open->User().ChooseComboRow(IDC_CONTRACT_COMBO, 2);
  EXPECT_THAT(controller.TakeEvents(), ElementsAre("selected 1040"));
  open->User().ChooseComboRow(IDC_CONTRACT_COMBO, 0);
  EXPECT_THAT(controller.TakeEvents(), ElementsAre("selected 1040"));
  EXPECT_THAT(seen, ElementsAre(std::optional<RowIndex>(2), std::optional<RowIndex>(0)));
}

}  // namespace
}  // namespace pelora::contract
