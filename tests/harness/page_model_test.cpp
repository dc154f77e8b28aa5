// SPDX-License-Identifier: Apache-2.0
// Somebody does on a tab whatever comes to mind, for as long as one likes. What is written is what
// was to be seen: the tab that is opened anew shows it, and no field that was left alone is
// another.
#include <gmock/gmock.h>

#include <algorithm>
#include <iostream>
#include <random>
#include <set>

#include "directory/ascii_case.h"
#include "tests/harness/page_scene.h"
#include "tests/support/long_form.h"

namespace pelora::testing {
namespace {

using Lines = std::vector<std::string>;

/// Written on every apply, touched or not.
const std::set<std::string_view> kAlwaysWritten = {"peloraResourceType", "peloraResourceCapacity",
                                                   "peloraHostAddress", "peloraContainsPublic"};

Lines RowsOf(const IListBox& list) {
  Lines rows;
  for (RowIndex row = 0; row < list.Count(); ++row) rows.push_back(list.Text(row));
  return rows;
}

/// The tab, and somebody who has no plan.
class Wanderer {
 public:
  Wanderer(const ComponentClass& component, unsigned seed) : scene_(component, 1), random_(seed) {
    EXPECT_EQ(scene_.Open(), S_OK);
  }

  /// Does one thing, or applies and looks.
  void Step() {
    if (Roll(8) == 0) return ApplyAndLook();
    const FieldRow& row = scene_.rows()[Roll(scene_.rows().size())];
    if (row.is_read_only || !scene_.page().IsShown(row.control)) return;
    if (Edit(row)) edited_.insert(row.attributes.begin(), row.attributes.end());
  }
  void ApplyAndLook();

 private:
  [[nodiscard]] std::size_t Roll(std::size_t sides) { return random_() % sides; }
  [[nodiscard]] HeadlessUser User() { return HeadlessUser(scene_.page()); }

  bool Edit(const FieldRow& row);
  bool Type(const FieldRow& row);
  bool Choose(const FieldRow& row);
  bool ChangeList(const FieldRow& row);
  bool AddText(const FieldRow& row);
  bool SelectEntry(const FieldRow& row);
  bool SelectChoice(const FieldRow& row);
  [[nodiscard]] std::string Shown(const FieldRow& row);
  [[nodiscard]] std::map<std::string, std::string> ShownByAll();
  void ExpectNothingElse(const FakeAttributes& before, const FakeAttributes& now) const;

  PageScene scene_;
  std::mt19937 random_;
  std::set<std::string_view> edited_;
  int next_address_ = 0;
};

bool Wanderer::Edit(const FieldRow& row) {
  switch (row.kind) {
    case FieldKind::kFlag:
      return User().Click(row.control) == UserAnswer::kDone;
    case FieldKind::kNumber:
    case FieldKind::kText:
      return Type(row);
    case FieldKind::kName:
    case FieldKind::kServer:
      return Choose(row);
    case FieldKind::kDefaultEntry:
    case FieldKind::kList:
    case FieldKind::kNameList:
      return ChangeList(row);
    case FieldKind::kChoice:
      return SelectChoice(row);
  }
  return false;
}

bool Wanderer::Type(const FieldRow& row) {
  if (User().EraseText(row.control) != UserAnswer::kDone) return false;
  std::string text;
  if (Roll(4) != 0) text = std::to_string(Roll(100'000));
  if (row.kind == FieldKind::kText && !text.empty()) text = "größer als " + text;
  return User().TypeText(row.control, text) == UserAnswer::kDone;
}

bool Wanderer::Choose(const FieldRow& row) {
  const std::string path = ChosenPath({});
  FakeChoosers& choosers = scene_.bench().choosers;
  choosers.Choose({path});
  choosers.Find(ChosenObjects::AsObjectNames({path}));
  choosers.Browse(kDialogOk, path);
  const bool is_done = User().Click(row.choose) == UserAnswer::kDone;
  choosers.Choose(static_cast<ChosenObjects*>(nullptr));
  choosers.Find(nullptr);
  return is_done;
}

bool Wanderer::ChangeList(const FieldRow& row) {
  if (!row.entry.empty()) return SelectEntry(row) && AddText(row);
  const IListBox& list = scene_.page().ListBox(row.control);
  const bool is_names = row.kind == FieldKind::kNameList;
  const std::size_t way = Roll(3);
  if (way == 0 || list.Count() == 0) {
    // A value twice in a list is none of a directory's.
    const Lines rows = RowsOf(list);
    if (!is_names) return AddText(row);
    return std::ranges::find(rows, EditedValues{}.chosen) == rows.end() && Choose(row);
  }
  // The last address stays: a tab does not clear the default one.
  if (way == 1 && !is_names && list.Count() == 1) return false;
  const RowIndex at = Roll(list.Count());
  // Nor is it deleted: to whom its mark passes is the list's own affair, and tested there.
  const bool is_default = !is_names && list.Text(at).ends_with(".EXAMPLE");
  if (way == 1 && is_default) return false;
  User().SelectListRow(row.control, at);
  const ControlId button = way == 1 || is_names ? row.remove : row.make_default;
  return User().Click(button) == UserAnswer::kDone;
}

bool Wanderer::AddText(const FieldRow& row) {
  if (!scene_.page().IsEnabled(row.choose)) return false;
  const std::string address = "a" + std::to_string(next_address_++) + "@x.example";
  scene_.bench().dialogs.PlayNext([address, layout = row.typed_in](HeadlessUser& typist) {
    typist.EraseText(layout.text);
    typist.TypeText(layout.text, address);
    if (layout.add != 0) typist.Click(layout.add);
    typist.Click(static_cast<ControlId>(kDialogOk));
  });
  return User().Click(row.choose) == UserAnswer::kDone;
}

bool Wanderer::SelectEntry(const FieldRow& row) {
  const IListView& view = scene_.page().ListView(row.control);
  for (RowIndex at = 0; at < view.RowCount(); ++at) {
    if (view.Text(at, 0) != row.entry) continue;
    return User().ClickListViewCell(row.control, at, 0, false) == UserAnswer::kDone;
  }
  return false;
}

bool Wanderer::SelectChoice(const FieldRow& row) {
  const std::size_t choice = Roll(row.choices.size());
  if (row.choice_buttons.empty()) {
    return User().SelectComboRow(row.control, choice) == UserAnswer::kDone;
  }
  const ControlId button = row.choice_buttons.at(choice);
  return button != 0 && SelectEntry(row) && User().Click(button) == UserAnswer::kDone;
}

std::string Wanderer::Shown(const FieldRow& row) {
  HeadlessDialog& page = scene_.page();
  switch (row.kind) {
    case FieldKind::kFlag:
      return page.Check(row.control) == CheckState::kChecked ? "yes" : "no";
    case FieldKind::kNumber:
      // What is not set reads as 0. One that cannot be edited is not always written.
      if (!page.IsEnabled(row.control)) return "not to be edited";
      return page.Text(row.control).empty() ? "0" : page.Text(row.control);
    case FieldKind::kText:
    case FieldKind::kName:
    case FieldKind::kServer:
      return page.Text(row.control);
    default:
      break;
  }
  if (row.kind == FieldKind::kChoice && row.choice_buttons.empty()) {
    return std::to_string(page.ComboBox(row.control).Selection().value_or(99));
  }
  if (!row.entry.empty()) {
    const IListView& view = page.ListView(row.control);
    std::string text;
    for (RowIndex at = 0; at < view.RowCount(); ++at) {
      if (view.Text(at, 0) == row.entry) text = view.Text(at, 1);
    }
    return text;
  }
  // The default entry stands in capitals.
  Lines rows = RowsOf(page.ListBox(row.control));
  std::ranges::sort(rows);
  std::string text;
  for (const std::string& one : rows) text += one + "; ";
  return text;
}

std::map<std::string, std::string> Wanderer::ShownByAll() {
  std::map<std::string, std::string> shown;
  for (const FieldRow& row : scene_.rows()) shown[row.name] = Shown(row);
  return shown;
}

void Wanderer::ExpectNothingElse(const FakeAttributes& before, const FakeAttributes& now) const {
  std::set<std::string> names;
  for (const FakeAttributes* const attributes : {&before, &now}) {
    for (const auto& [name, value] : *attributes) names.insert(name);
  }
  for (const std::string& name : names) {
    if (edited_.contains(name)) continue;
    const auto was = before.find(name);
    const auto is = now.find(name);
    const bool is_same = (was == before.end()) == (is == now.end()) &&
                         (was == before.end() || was->second == is->second);
    EXPECT_TRUE(is_same || (kAlwaysWritten.contains(name) && was == before.end())) << name;
  }
}

void Wanderer::ApplyAndLook() {
  const FakeAttributes before = scene_.Stored().front();
  const auto shown = ShownByAll();
  const bool is_done = scene_.Ok();
  const Lines boxes = scene_.TakeBoxes();
  if (!is_done) {
    EXPECT_THAT(boxes, ::testing::ElementsAre(
                           ::testing::StartsWith("Validation of input fields failed: Missing ")));
    EXPECT_EQ(scene_.Stored().front(), before);
    EXPECT_TRUE(scene_.IsOpen());
    return;
  }
  EXPECT_EQ(boxes, Lines());
  ExpectNothingElse(before, scene_.Stored().front());
  edited_.clear();
  EXPECT_EQ(scene_.Open(), S_OK);
  EXPECT_EQ(ShownByAll(), shown);
}

class PageModel : public ::testing::TestWithParam<const ComponentClass*> {};

TEST_P(PageModel, WhatIsWrittenIsWhatWasToBeSeen) {
  constexpr std::size_t kSteps = 60;
  const std::size_t rounds = RoundsOr(20);
  const unsigned seed = std::random_device{}();
  for (std::size_t round = 0; round < rounds; ++round) {
    SCOPED_TRACE("seed " + std::to_string(seed + round));
    Wanderer wanderer(*GetParam(), static_cast<unsigned>(seed + round));
    for (std::size_t step = 0; step < kSteps && !HasFailure(); ++step) wanderer.Step();
    if (HasFailure()) return;
    wanderer.ApplyAndLook();
  }
  std::cout << "random edits and applies: " << rounds * kSteps << " (" << GetParam()->name << ")\n";
}

std::vector<const ComponentClass*> Tabs() {
  std::vector<const ComponentClass*> tabs;
  for (const ComponentClass& component : ClassTable()) {
    if (component.kind == ComponentKind::kPropertyPage) tabs.push_back(&component);
  }
  return tabs;
}

INSTANTIATE_TEST_SUITE_P(EveryTab, PageModel, ::testing::ValuesIn(Tabs()),
                         [](const auto& row) { return std::string(row.param->name); });

}  // namespace
}  // namespace pelora::testing
