// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "hosts/windows/dialogs/win32_dialog.h"
#include "tests/windows/support/console.h"
#include "tests/windows/support/extension_test.h"
#include "tests/windows/support/message_box_reader.h"

namespace pelora::windows::test {

/// An error box of the extension over a sheet.
[[nodiscard]] ShownBox ErrorBox(const std::string& text);

/// Base of tests of property tabs in a sheet of the system's: a console, the person in front of it,
/// and what is left when the test is over, which has to be nothing: no bound object, no reference
/// to the selection, no lock on the module, no box that nobody took, no fault that did not happen.
class TabTest : public ExtensionTest {
 protected:
  TabTest() { console_.Select({}); }
  ~TabTest() override;

  [[nodiscard]] pelora::testing::FakeDirectory& directory() { return console_.directory(); }
  [[nodiscard]] SheetWindow& sheet() { return console_.sheet(); }
  [[nodiscard]] Win32Dialog Page() { return {sheet().Page(), DialogRole::kPage}; }
  [[nodiscard]] WindowPlayer User() { return console_.User(); }

  /// Selects the objects and shows the tab of a class on them. The directory's calls up to here are
  /// forgotten.
  void Open(std::string_view class_name, const std::vector<std::string>& paths);
  /// The controls of the page that shows.
  [[nodiscard]] std::vector<std::string> Controls();
  /// Replaces a text as a person does.
  void Retype(ControlId id, std::string_view text);
  /// Clicks Apply and gives the changing calls that this makes.
  [[nodiscard]] std::vector<std::string> Apply();
  /// Saves a picture of the sheet as screenshots/NAME.png and fails when a control of the page that
  /// shows is clipped.
  void SavePage(const std::string& name);

  Console console_;
  MessageBoxReader boxes_;
};

}  // namespace pelora::windows::test
