// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "tests/contract/tab_console.h"
#include "tests/contract/tab_scripts.h"

// What every property tab does on every console: it shows what the directory holds, takes what a
// person does in each of its fields, and leaves that and nothing else in the directory. One suite
// over the scripts of tab_scripts.h, which every console runs:
//
//   INSTANTIATE_TEST_SUITE_P(Headless, TabContract, EveryTab(&MakeHeadlessConsole), TabName);
//
// in a program that links pelora_tab_contract. A console that draws runs TabLooks too.

namespace pelora::contract {

/// A console and a script, by its place.
using TabContractCase = std::tuple<TabConsoleFactory, std::size_t>;

[[nodiscard]] inline auto EveryTab(TabConsoleFactory factory) {
  return ::testing::Combine(::testing::Values(factory),
                            ::testing::Range(std::size_t{0}, TabScripts().size()));
}
[[nodiscard]] inline std::string TabName(const ::testing::TestParamInfo<TabContractCase>& info) {
  return TabScripts().at(std::get<1>(info.param)).component;
}

/// Does on the console's tab what a script says.
void PlaySteps(TabConsole& console, const std::vector<TabStep>& steps);

/// Makes the edits that every face makes (same_edits.h) on the console's tabs, and gives the dump
/// of what they leave.
[[nodiscard]] std::string PlaySameEdits(TabConsole& console);

class TabContract : public ::testing::TestWithParam<TabContractCase> {
 protected:
  [[nodiscard]] TabConsole& Console() { return *console_; }
  [[nodiscard]] const TabScript& Script() const { return script_; }

  void Open(std::size_t count);
  void Play(const std::vector<TabStep>& steps) { PlaySteps(Console(), steps); }
  /// The object's attributes, each "name: value | value", in order of their names.
  [[nodiscard]] std::vector<std::string> Entry(const std::string& name);
  /// The same, as it is to be after `writes`; without those that a page stages untouched where the
  /// console leaves them out.
  [[nodiscard]] std::vector<std::string> EntryAfter(const std::string& name,
                                                    const std::vector<TabWrite>& writes);
  /// The contents of every field of the tab.
  [[nodiscard]] std::vector<std::string> Fields();
  /// The controls that can be seen.
  [[nodiscard]] std::set<ControlId> Shown();

 private:
  [[nodiscard]] bool IsAlwaysWritten(const TabWrite& write);

  std::unique_ptr<TabConsole> console_ = std::get<0>(GetParam())();
  const TabScript script_ = Rebased(TabScripts().at(std::get<1>(GetParam())), console_->Base());
};

/// How tabs look, where they can be seen.
class TabLooks : public TabContract {};

}  // namespace pelora::contract
