// SPDX-License-Identifier: Apache-2.0
#include "tests/contract/tab_contract.h"

#include <algorithm>

#include "tests/contract/same_edits.h"

namespace pelora::contract {
namespace {

using Lines = std::vector<std::string>;

/// Controls have numbers from 200 on.
constexpr ControlId kFirstControl = 200;
constexpr ControlId kLastControl = 299;

void ClickUntil(TabConsole& console, ControlId box, CheckState wanted) {
  constexpr int kStates = 3;
  EXPECT_TRUE(console.Page().IsEnabled(box)) << box;
  for (int click = 0; click < kStates && console.Page().Check(box) != wanted; ++click) {
    console.User().Click(box);
  }
  EXPECT_EQ(console.Page().Check(box), wanted) << box;
}

void PlayStep(TabConsole& console, const TabStep& step) {
  using enum TabStep::Act;
  switch (step.act) {
    case kClick:
      EXPECT_TRUE(console.Page().IsEnabled(step.control)) << step.control;
      return console.User().Click(step.control);
    case kTick:
      return ClickUntil(console, step.control, CheckState::kChecked);
    case kUntick:
      return ClickUntil(console, step.control, CheckState::kUnchecked);
    case kType:
      console.User().Erase(step.control);
      console.User().Type(step.control, step.text);
      EXPECT_EQ(console.Page().Text(step.control), step.text);
      return;
    case kSelectRow:
      return console.User().ClickListRow(step.control,
                                         RowOf(console.Page().ListBox(step.control), step.text));
    case kChooseComboRow:
      return console.User().ChooseComboRow(step.control, step.row);
    case kTypeAddress:
      return console.TypeAddress(step.text);
    case kPick:
      return console.Pick(step.names);
    case kFind:
      return console.Find(step.names);
    case kBrowse:
      return console.Browse(step.names.front());
  }
}

}  // namespace

void PlaySteps(TabConsole& console, const std::vector<TabStep>& steps) {
  for (const TabStep& step : steps) PlayStep(console, step);
}

std::string PlaySameEdits(TabConsole& console) {
  for (const SameEdit& edit : SameEdits()) {
    console.Open(edit.component, edit.objects);
    PlaySteps(console, edit.steps);
    console.ClickApply();
    console.Close();
  }
  return DumpOf([&console](const std::string& name) { return console.Stored(name); });
}

void TabContract::Open(std::size_t count) {
  Console().Open(
      Script().component,
      {Script().objects.begin(), Script().objects.begin() + static_cast<std::ptrdiff_t>(count)});
  EXPECT_FALSE(Console().IsApplyEnabled());
}

std::vector<std::string> TabContract::Entry(const std::string& name) {
  return ToLines(Console(), Console().Stored(name));
}

bool TabContract::IsAlwaysWritten(const TabWrite& write) {
  return std::ranges::any_of(Script().always, [&write](const TabWrite& always) {
    return always.attribute == write.attribute && always.values == write.values;
  });
}

std::vector<std::string> TabContract::EntryAfter(const std::string& name,
                                                 const std::vector<TabWrite>& writes) {
  TabValues values = Console().Stored(name);
  for (const TabWrite& write : writes) {
    if (Console().WritesUntouched() || !IsAlwaysWritten(write)) {
      values[write.attribute] = write.values;
    }
  }
  return ToLines(Console(), values);
}

std::vector<std::string> TabContract::Fields() {
  Lines fields;
  IDialog& page = Console().Page();
  for (ControlId id = kFirstControl; id <= kLastControl; ++id) {
    std::string line = std::to_string(id) + " " + page.Text(id);
    line += page.Check(id) == CheckState::kUnchecked ? "" : " checked";
    for (const std::string& row : RowsOf(page.ListBox(id))) line += " [" + row + "]";
    const auto chosen = page.ComboBox(id).Selection();
    if (chosen) line += " " + std::to_string(*chosen);
    fields.push_back(line);
  }
  return fields;
}

std::set<ControlId> TabContract::Shown() {
  std::set<ControlId> shown;
  for (ControlId id = kFirstControl; id <= kLastControl; ++id) {
    if (Console().Page().IsShown(id)) shown.insert(id);
  }
  return shown;
}

TEST_P(TabContract, WhatBelongsToOneObjectIsHiddenForSeveralAndNothingElse) {
  Open(1);
  std::set<ControlId> shown = Shown();
  Console().Close();
  Open(3);
  for (const ControlId id : Script().of_one) EXPECT_EQ(shown.erase(id), 1U) << id;
  EXPECT_EQ(Shown(), shown);
}

TEST_P(TabContract, EveryFieldReachesTheDirectoryAndComesBack) {
  const std::string& object = Script().objects.front();
  const Lines expected = EntryAfter(object, Script().writes);
  ASSERT_NE(Entry(object), expected);
  Open(1);
  const Lines loaded = Fields();
  Play(Script().steps);
  const Lines edited = Fields();
  EXPECT_NE(edited, loaded);
  EXPECT_TRUE(Console().IsApplyEnabled());
  Console().ClickApply();
  EXPECT_FALSE(Console().IsApplyEnabled());
  EXPECT_EQ(Entry(object), expected);
  Console().Close();
  Open(1);
  EXPECT_EQ(Fields(), edited);
}

TEST_P(TabContract, ThreeObjectsTakeWhatWasEditedAndNothingElse) {
  std::vector<Lines> expected;
  for (const std::string& object : Script().objects) {
    expected.push_back(EntryAfter(object, Script().writes_to_three));
  }
  Open(3);
  Play(Script().steps_for_three);
  EXPECT_TRUE(Console().IsApplyEnabled());
  if (!Script().refusal_of_three.empty()) Console().AwaitBox();
  Console().ClickApply();
  if (!Script().refusal_of_three.empty()) {
    EXPECT_EQ(Console().TakeBox(), ErrorBox(Script().refusal_of_three));
  }
  EXPECT_EQ(Console().IsApplyEnabled(), !Script().refusal_of_three.empty());
  for (std::size_t index = 0; index < expected.size(); ++index) {
    EXPECT_EQ(Entry(Script().objects[index]), expected[index]);
  }
}

TEST_P(TabContract, OkWithoutAnEditLeavesWhatIsAlwaysWritten) {
  const std::string& object = Script().objects.front();
  const Lines expected = EntryAfter(object, Script().always);
  Open(1);
  Console().ClickOk();
  EXPECT_FALSE(Console().IsOpen());
  EXPECT_EQ(Entry(object), expected);
}

TEST_P(TabContract, CancelLeavesEverythingAsItWas) {
  const Lines before = Entry(Script().objects.front());
  Open(1);
  Play(Script().steps);
  Console().Close();
  EXPECT_FALSE(Console().IsOpen());
  EXPECT_EQ(Entry(Script().objects.front()), before);
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(TabLooks);

TEST_P(TabLooks, NothingIsCutOffAndNothingOverlaps) {
  for (const std::size_t count : {1U, 3U}) {
    Open(count);
    EXPECT_EQ(Console().FaultsOfSight(), Lines());
    Console().SavePicture("sample_" + Script().component + (count == 1 ? "" : "_three"));
    Console().Close();
  }
}

}  // namespace pelora::contract
