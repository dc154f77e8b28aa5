// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "resources/resource.h"
#include "tests/contract/tab_rules.h"

namespace pelora::contract {

/// The rules of the user tab, on every console:
///
///   INSTANTIATE_TEST_SUITE_P(Headless, UserTabContract, ::testing::Values(&MakeHeadlessConsole));
class UserTabContract : public TabRules {
 protected:
  enum AccountType : RowIndex {
    kActiveUser,
    kSharedStore,
    kRoom,
    kEquipment,
    kAdministrator,
    kSystemAdministrator
  };

  /// Opens a user who has these values, an account and a capacity of 0 unless they say otherwise,
  /// and nothing else that the tab shows. What every apply writes is written already.
  void OpenUser(TabValues values) { OpenUsers({std::move(values)}); }
  /// The same of two users.
  void OpenUsers(std::vector<TabValues> users);

  // Of a user with "a" in `mail`, and other addresses or delegates.
  void OpenWith(const Lines& others);
  void OpenWithDelegates(const std::vector<const char*>& samples);
  [[nodiscard]] Lines Addresses() { return Rows(IDC_EMAIL_LIST); }
  void ClickAddress(const std::string& text) { ClickRow(IDC_EMAIL_LIST, text); }
  /// Clicks a button that opens the dialog of an address, and types there in place of what it
  /// shows.
  void EnterAddress(ControlId button, const std::string& address);
  /// Which of the buttons for the selected address can be pressed.
  [[nodiscard]] std::string Buttons();

  void ChooseType(AccountType type) { User().ChooseComboRow(IDC_ACCOUNT_TYPE, type); }
  [[nodiscard]] std::optional<RowIndex> ShownType() {
    return Page().ComboBox(IDC_ACCOUNT_TYPE).Selection();
  }
  [[nodiscard]] bool CapacityIsEnabled();
  [[nodiscard]] bool LimitsAreEnabled();
};

}  // namespace pelora::contract
