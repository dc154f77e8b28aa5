// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "resources/resource.h"
#include "tests/contract/tab_rules.h"

namespace pelora::contract {

/// The rules of the features tab, on every console:
///
///   INSTANTIATE_TEST_SUITE_P(Headless, FeaturesTabContract,
///   ::testing::Values(&MakeHeadlessConsole));
class FeaturesTabContract : public TabRules {
 protected:
  static constexpr RowIndex kArchiver = 0;
  static constexpr RowIndex kImap = 1;
  static constexpr RowIndex kPop3 = 2;
  /// The empty space below the rows.
  static constexpr RowIndex kNoRow = 3;

  struct Lists {
    Lines enabled{};
    Lines disabled{};
    Lines servers{};
  };

  /// Opens the tab on up to three users with these lists.
  void OpenUsers(const std::vector<Lists>& users);
  /// imap is enabled, pop3 is ambiguous.
  void OpenTwo(const char* server_of_one = "arc1", const char* server_of_other = "arc1");
  /// Every row: "feature: status", the status in brackets where it is muted.
  [[nodiscard]] Lines Features();
  [[nodiscard]] std::string Feature(RowIndex row) { return Features().at(row); }
  /// The buttons that can be pressed, or "none".
  [[nodiscard]] std::string Buttons();
  void Click(RowIndex row, bool add = false);
  void DoubleClick(RowIndex row);
  /// Selects a row and presses a button.
  void Choose(RowIndex row, ControlId button);
  /// Has the next dialog take this server beside the ones that it shows, and end with OK.
  void AddServer(const std::string& name);
};

}  // namespace pelora::contract
