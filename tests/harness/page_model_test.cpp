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
#include "tests/harness/random_editor.h"
#include "tests/support/long_form.h"

namespace pelora::testing {
namespace {

using Lines = std::vector<std::string>;

/// Written on every apply, touched or not.
const std::set<std::string_view> kAlwaysWritten = {"peloraResourceType", "peloraResourceCapacity",
                                                   "peloraHostAddress", "peloraContainsPublic"};

/// The tab, and somebody who has no plan.
class Wanderer {
 public:
  Wanderer(const ComponentClass& component, unsigned seed)
      : scene_(component, 1),
        editor_(scene_.bench().dialogs, scene_.bench().choosers, {.chosen = {ChosenPath({})}},
                DiceOf(seed)) {
    EXPECT_EQ(scene_.Open(), S_OK);
  }

  /// Does one thing, or applies and looks.
  void Step() {
    if (editor_.Roll(8) == 0) return ApplyAndLook();
    const FieldRow& row = scene_.rows()[editor_.Roll(scene_.rows().size())];
    if (!editor_.Edit(HeadlessUser(scene_.page()), row)) return;
    edited_.insert(row.attributes.begin(), row.attributes.end());
  }
  void ApplyAndLook();

 private:
  [[nodiscard]] std::map<std::string, std::string> ShownByAll();
  void ExpectNothingElse(const FakeAttributes& before, const FakeAttributes& now) const;

  PageScene scene_;
  RandomEditor editor_;
  std::set<std::string_view> edited_;
};

std::map<std::string, std::string> Wanderer::ShownByAll() {
  std::map<std::string, std::string> shown;
  for (const FieldRow& row : scene_.rows()) shown[row.name] = MeantIn(scene_.page(), row);
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
  // The same in every run of the short form.
  constexpr unsigned kSeed = 1;
  const unsigned seed = RoundsOr(0) == 0 ? kSeed : std::random_device{}();
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
