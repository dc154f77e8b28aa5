// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "hosts/headless/headless_list_box.h"
#include "hosts/headless/headless_list_view.h"
#include "hosts/headless/headless_text_service.h"
#include "hosts/headless/list_order.h"

namespace pelora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

bool StandsBefore(std::string_view left, std::string_view right) {
  const HeadlessTextService service;
  return ListOrderKey(left, service) < ListOrderKey(right, service);
}

TEST(ListOrder, PutsMarksBeforeDigitsBeforeLetters) {
  const std::vector<std::string> ordered{"",   "@x",  "_x",    "1",          "12", "2",
                                         "a",  "a.b", "a1",    "ab",         "B",  "b@x",
                                         "ba", "Zoo", "Ärzte", "ärzteblatt", "Öl", "漢字"};
  for (std::size_t left = 0; left < ordered.size(); ++left) {
    for (std::size_t right = 0; right < ordered.size(); ++right) {
      EXPECT_EQ(StandsBefore(ordered[left], ordered[right]), left < right)
          << ordered[left] << " and " << ordered[right];
    }
  }
}

TEST(ListOrder, KnowsNoCase) {
  EXPECT_FALSE(StandsBefore("KARL@EXAMPLE.ORG", "karl@example.org"));
  EXPECT_FALSE(StandsBefore("karl@example.org", "KARL@EXAMPLE.ORG"));
  EXPECT_FALSE(StandsBefore("ÄRZTE", "ärzte"));
  EXPECT_FALSE(StandsBefore("ärzte", "ÄRZTE"));
}

TEST(HeadlessListBox, PutsEqualRowsBehindOneAnother) {
  HeadlessListBox list(true);
  EXPECT_EQ(list.Add("b"), 0U);
  EXPECT_EQ(list.Add("B"), 1U);
  EXPECT_EQ(list.Add("b"), 2U);
  EXPECT_EQ(list.Add("a"), 0U);
  EXPECT_EQ(list.Text(2), "B");
}

TEST(HeadlessListBox, AnswersForRowsThatDoNotExist) {
  HeadlessListBox list(false);
  EXPECT_EQ(list.Text(0), "");
  EXPECT_EQ(list.Data(0), nullptr);
  list.SetData(0, &list);
  EXPECT_EQ(list.Add("a"), 0U);
  EXPECT_EQ(list.Data(0), nullptr);
}

class HeadlessListViewTest : public testing::Test {
 protected:
  std::vector<ListViewItemChange> changes;
  HeadlessListView view{[this](const ListViewItemChange& change) { changes.push_back(change); }};
};

TEST_F(HeadlessListViewTest, TellsATextsChangeFromAStates) {
  view.InsertColumn(0, "Name", 50);
  view.InsertRow(0, "row");
  EXPECT_THAT(changes, IsEmpty());
  view.SetText(0, 0, "other");
  ASSERT_EQ(changes.size(), 1U);
  EXPECT_FALSE(changes[0].state_changed);
  view.SetSelected(0, true);
  ASSERT_EQ(changes.size(), 2U);
  EXPECT_TRUE(changes[1].state_changed);
  EXPECT_FALSE(changes[1].was_selected);
  EXPECT_TRUE(changes[1].is_selected);
  view.SetText(0, 0, "third");
  ASSERT_EQ(changes.size(), 3U);
  EXPECT_FALSE(changes[2].state_changed);
  EXPECT_TRUE(changes[2].was_selected);
  EXPECT_TRUE(changes[2].is_selected);
}

TEST_F(HeadlessListViewTest, KeepsColumns) {
  view.InsertColumn(0, "Status", 40);
  view.InsertColumn(0, "Name", 50);
  view.SetFullRowSelect(true);
  ASSERT_EQ(view.columns().size(), 2U);
  EXPECT_EQ(view.columns()[0].title, "Name");
  EXPECT_EQ(view.columns()[0].width, 50);
  EXPECT_EQ(view.columns()[1].title, "Status");
  EXPECT_TRUE(view.full_row_select());
}

TEST_F(HeadlessListViewTest, AColumnInBetweenMovesTheTexts) {
  view.InsertColumn(0, "a", 10);
  view.InsertColumn(1, "b", 10);
  view.InsertRow(0, "0");
  view.SetText(0, 1, "1");
  view.InsertColumn(1, "between", 10);
  EXPECT_EQ(view.Text(0, 0), "0");
  EXPECT_EQ(view.Text(0, 1), "");
  EXPECT_EQ(view.Text(0, 2), "1");
}

TEST_F(HeadlessListViewTest, IgnoresRowsAndColumnsThatDoNotExist) {
  view.InsertColumn(0, "Name", 50);
  view.InsertRow(7, "row");
  EXPECT_EQ(view.Text(0, 0), "row");
  view.SetText(0, 1, "x");
  view.SetText(1, 0, "x");
  view.SetSelected(1, true);
  EXPECT_EQ(view.Text(0, 1), "");
  EXPECT_FALSE(view.IsSelected(1));
  EXPECT_THAT(changes, IsEmpty());
}

}  // namespace
}  // namespace pelora
