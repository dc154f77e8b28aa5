// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "hosts/windows/system_headers.h"
#include "tests/windows/support/window_player.h"

namespace pelora::windows::test {

/// A property sheet of the system's, open and driven by messages. It stands beside the test, which
/// goes on while the sheet is open.
class SheetWindow {
 public:
  /// Takes the pages over and shows the first one. `flags` may make it a wizard (`PSH_WIZARD`).
  explicit SheetWindow(std::vector<HPROPSHEETPAGE> pages, DWORD flags = 0);
  /// Closes the sheet as its Cancel button does, when it is still open.
  ~SheetWindow();
  SheetWindow(const SheetWindow&) = delete;
  SheetWindow& operator=(const SheetWindow&) = delete;

  [[nodiscard]] HWND window() const { return window_; }
  /// Whether the sheet still stands: OK and Cancel may have ended it.
  [[nodiscard]] bool IsOpen() const;
  /// The dialog of the page that shows.
  [[nodiscard]] HWND Page() const;
  [[nodiscard]] WindowPlayer User() const { return WindowPlayer(Page()); }

  /// As a click on the page's tab.
  void SelectPage(std::size_t page) const;
  [[nodiscard]] std::size_t CurrentPage() const;
  [[nodiscard]] std::string TabText(std::size_t page) const;
  [[nodiscard]] bool IsApplyEnabled() const;
  void ClickApply();
  void ClickOk();
  void ClickCancel();
  /// Clicks a button of the sheet's, by its number; a disabled one does not react.
  void Press(int button);
  /// Destroys the sheet without asking any page.
  void Destroy() { DestroyWindow(window_); }

  /// What the page that shows answered to each notification of a code.
  [[nodiscard]] std::vector<LRESULT> AnswersTo(UINT code) const;

 private:
  struct Answer {
    UINT code;
    LRESULT result;
  };

  static LRESULT CALLBACK LookOn(HWND window, UINT message, WPARAM wide, LPARAM narrow, UINT_PTR id,
                                 DWORD_PTR sheet);
  void Watch();

  HWND window_ = nullptr;
  std::vector<Answer> answers_;
};

}  // namespace pelora::windows::test
