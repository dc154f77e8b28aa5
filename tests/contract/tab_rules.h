// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/contract/tab_console.h"
#include "tests/support/sample_objects.h"

namespace pelora::contract {

/// Base of suites that hold what one tab does on every console, rule by rule: objects of the sample
/// company, given values of the test's own, at the tab in its sheet.
class TabRules : public ::testing::TestWithParam<TabConsoleFactory> {
 protected:
  using Lines = std::vector<std::string>;

  [[nodiscard]] TabConsole& Console() { return *console_; }
  [[nodiscard]] IDialog& Page() { return console_->Page(); }
  [[nodiscard]] DialogPlayer& User() { return console_->User(); }

  /// An object of the sample company, by the name that it has on this console.
  [[nodiscard]] std::string Here(const char* sample) const;
  [[nodiscard]] Lines AllHere(const std::vector<const char*>& samples) const;

  /// Opens a tab on objects and remembers what the directory holds of them.
  void Open(const std::string& component, const std::vector<const char*>& samples);
  /// What has become of an object of the selection since it was opened or last asked for: what
  /// changed attributes hold now, each a line ("mail: a", "mail: none").
  [[nodiscard]] Lines Changes(std::size_t number = 0);
  /// Clicks Apply, and OK, which has to close the sheet; the changes of the first object.
  [[nodiscard]] Lines Apply();
  [[nodiscard]] Lines Ok();

  void Retype(ControlId id, std::string_view text);
  [[nodiscard]] Lines Rows(ControlId list) { return RowsOf(Page().ListBox(list)); }
  void ClickRow(ControlId list, const std::string& text);
  /// The text of the selected row; "nothing" without one.
  [[nodiscard]] std::string SelectedRow(ControlId list);
  /// Clicks a button with these objects chosen in the picker that it opens.
  void Pick(ControlId button, const std::vector<const char*>& samples);

 private:
  std::unique_ptr<TabConsole> console_ = GetParam()();
  Lines names_;
  std::vector<TabValues> before_;
};

}  // namespace pelora::contract
