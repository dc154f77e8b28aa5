// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "resources/resource.h"
#include "tests/windows/support/tab_test.h"

namespace pelora::windows::test {

/// Base of suites of the user tab: one or several users in a sheet, and what a person does there.
class UserTab : public TabTest {
 protected:
  using FakeAttributes = pelora::testing::FakeAttributes;
  using Lines = std::vector<std::string>;

  /// Shows one user, who has an account.
  void OpenUser(FakeAttributes attributes);
  /// Shows several users at once, who have accounts.
  void OpenUsers(std::vector<FakeAttributes> users);

  /// Texts of a list box, from top to bottom.
  [[nodiscard]] Lines Rows(ControlId list);
  /// Clicks the row of that text; the test fails when there is none.
  void ClickRow(ControlId list, std::string_view text);
  /// Clicks a button that opens the dialog of an address, replaces the address in it, and clicks
  /// OK.
  void EnterAddress(ControlId button, std::string_view address);
  void AddAddress(std::string_view address) { EnterAddress(IDC_EMAIL_ADD, address); }
  [[nodiscard]] bool IsEnabled(ControlId id) { return Page().IsEnabled(id); }
  [[nodiscard]] bool IsModified() { return sheet().IsApplyEnabled(); }

  /// The calls of an apply to one user: `own`, then what is written on every apply to a user who is
  /// no resource and whose capacity was never set.
  [[nodiscard]] static Lines WithUsual(std::initializer_list<std::string> own);
};

}  // namespace pelora::windows::test
