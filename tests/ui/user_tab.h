// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "resources/resource.h"
#include "tests/ui/console_test.h"
#include "tests/ui/open_sheet.h"

namespace pelora::test {

/// Base of suites of the user tab: users of the sample company in a sheet on the screen, and what a
/// person does there.
class UserTab : public ConsoleTest {
 protected:
  using Lines = std::vector<std::string>;
  /// Name and value of an attribute; one that stands several times has several values.
  using Values = std::vector<std::pair<std::string, std::string>>;

  UserTab();

  /// Gives an entry these values and takes away every other Pelora setting and address that the tab
  /// shows. It has an account, and a capacity of 0 unless one is given.
  void Give(const char* dn, Values values);
  void Open(const std::vector<std::string>& names);
  /// Gives a user these values and opens the tab.
  void OpenUser(Values values);

  [[nodiscard]] OpenSheet& sheet() { return *sheet_; }
  [[nodiscard]] console::QtDialog& page() { return sheet_->dialog(); }
  [[nodiscard]] contract::QtPlayer& user() { return sheet_->user(); }
  /// Texts of a list box, from top to bottom.
  [[nodiscard]] Lines Rows(ControlId list);
  /// Text of the selected row, "nothing" without one.
  [[nodiscard]] std::string SelectedRow(ControlId list);
  void ClickRow(ControlId list, std::string_view text);
  /// Clicks a button that opens the dialog of an address, replaces the address in it, and enters
  /// it.
  void EnterAddress(ControlId button, std::string_view address);

  /// Clicks Apply and tells what that did to the user.
  [[nodiscard]] Lines Apply();
  /// Clicks OK, which has to close the sheet, and tells what that did to a user of the selection.
  [[nodiscard]] Lines OkDifference(std::size_t number = 0);

 private:
  std::vector<std::string> names_;
  std::vector<EntryLines> before_;
  std::unique_ptr<OpenSheet> sheet_;
};

}  // namespace pelora::test
