// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tests/windows/support/extension_test.h"
#include "tests/windows/support/message_box_reader.h"
#include "tests/windows/wizards/wizard_console.h"

namespace pelora::windows::test {

/// Base of tests of wizard pages in a wizard of the system's. When a test is over nothing may be
/// left: no bound object, no reference to the wizard, no lock on the module, no box that nobody
/// took, no fault that did not happen.
class WizardTest : public ExtensionTest {
 protected:
  using Lines = std::vector<std::string>;

  ~WizardTest() override;

  /// Shows the wizard with the page of an extension, on the console's own first page.
  void Open(std::string_view class_name);
  /// Goes on to the extension's page, for an object of that name; what was logged is forgotten.
  void GoToPage(const std::string& name);
  /// Shows the wizard with a primary extension and the one that follows it.
  void OpenPrimary(std::string_view primary, std::string_view extension);
  /// Clicks Next and Finish from the extension's page, and gives what that made happen.
  [[nodiscard]] Lines Finish();
  /// The controls of the page that shows.
  [[nodiscard]] Lines Controls();
  [[nodiscard]] ControlWindow Control(ControlId id) { return {console_.Page(), id}; }
  [[nodiscard]] std::string Text(ControlId id);
  /// Saves a picture of the wizard as screenshots/NAME.png and fails when a control of the page
  /// that shows is clipped.
  void SavePage(const std::string& name);
  /// The boxes since the last time, each in a line: "error: text".
  [[nodiscard]] Lines TakeBoxes();

  WizardConsole console_;
  MessageBoxReader boxes_;
};

}  // namespace pelora::windows::test
