// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "tests/contract/dialog_player.h"
#include "tests/contract/tab_scripts.h"

// What every property tab does on every console: it shows what the directory holds, takes what a
// person does in each of its fields, and leaves that and nothing else in the directory. One suite
// over the scripts of tab_scripts.h, which every console runs:
//
//   INSTANTIATE_TEST_SUITE_P(Headless, TabContract, EveryTab(&MakeHeadlessConsole), TabName);
//
// in a program that links pelora_tab_contract. A console that draws runs TabLooks too.

namespace pelora::contract {

/// Values of attributes by the attributes' names, as text.
using TabValues = std::map<std::string, std::vector<std::string>>;

/// A console over the sample company, and the person in front of it; made anew for each test. What
/// is chosen or typed in windows of their own is said beforehand.
class TabConsole {
 public:
  /// Closes a sheet that is still open, asking nobody.
  virtual ~TabConsole() = default;

  /// Opens the property sheet of objects, by distinguished name, at the tab of a component class.
  virtual void Open(const std::string& component, const std::vector<std::string>& names) = 0;
  virtual void Close() = 0;
  /// The tab's dialog, for looking at it.
  [[nodiscard]] virtual IDialog& Page() = 0;
  [[nodiscard]] virtual DialogPlayer& User() = 0;

  virtual void Pick(const std::vector<std::string>& names) = 0;
  virtual void Find(const std::vector<std::string>& names) = 0;
  virtual void Browse(const std::string& name) = 0;
  virtual void TypeAddress(const std::string& address) = 0;
  /// The next window is a message box, which is confirmed; `TakeBox` gives its first line.
  virtual void AwaitBox() = 0;
  [[nodiscard]] virtual std::string TakeBox() = 0;

  [[nodiscard]] virtual bool IsApplyEnabled() const = 0;
  virtual void ClickApply() = 0;
  virtual void ClickOk() = 0;
  [[nodiscard]] virtual bool IsOpen() const = 0;
  /// Whether what a page writes on every apply is written though nobody touched it.
  [[nodiscard]] virtual bool WritesUntouched() const { return true; }

  // Asked of consoles that draw.

  /// What is wrong with how the tab looks, in words: controls that are cut off or overlap.
  [[nodiscard]] virtual std::vector<std::string> FaultsOfSight() { return {"nothing is seen"}; }
  /// Keeps a picture of the sheet.
  virtual void SavePicture(const std::string& /*name*/) {}

  /// The name that the company's objects stand below.
  [[nodiscard]] virtual std::string Base() const { return std::string(kSampleBase); }
  /// What the directory holds of the catalogue's attributes of an object, values in its order.
  [[nodiscard]] virtual TabValues Stored(const std::string& name) = 0;
  /// Whether the directory keeps the order in which an attribute's values were written.
  [[nodiscard]] virtual bool KeepsOrder() const { return true; }
};

using TabConsoleFactory = std::unique_ptr<TabConsole> (*)();
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

 private:
  [[nodiscard]] bool IsAlwaysWritten(const TabWrite& write);
  [[nodiscard]] std::vector<std::string> ToLines(const TabValues& values);

  std::unique_ptr<TabConsole> console_ = std::get<0>(GetParam())();
  const TabScript script_ = Rebased(TabScripts().at(std::get<1>(GetParam())), console_->Base());
};

/// How tabs look, where they can be seen.
class TabLooks : public TabContract {};

}  // namespace pelora::contract
