// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>

#include "hosts/windows/system_headers.h"

namespace pelora::windows::test {

/// What a page of the console's own reports to the console.
class OwnPageEvents {
 public:
  /// `window` is the wizard.
  virtual void OnShown(HWND window, bool is_last) = 0;
  /// False keeps the wizard on the page.
  [[nodiscard]] virtual bool OnNext() = 0;
  [[nodiscard]] virtual bool OnFinish() = 0;

 protected:
  ~OwnPageEvents() = default;
};

/// A page of the console's own in a wizard of the system's: the first or the last, without any
/// control. It outlives the page made of it.
class OwnPage {
 public:
  OwnPage(OwnPageEvents& events, bool is_last) : events_(events), is_last_(is_last) {}
  OwnPage(const OwnPage&) = delete;
  OwnPage& operator=(const OwnPage&) = delete;

  /// A new page, for a wizard to take over.
  [[nodiscard]] HPROPSHEETPAGE Make();

 private:
  struct Template {
    DLGTEMPLATE head = {.style = WS_CHILD | WS_DISABLED | WS_CAPTION,
                        .dwExtendedStyle = 0,
                        .cdit = 0,
                        .x = 0,
                        .y = 0,
                        .cx = 262,
                        .cy = 157};
    /// Neither menu nor class nor title.
    std::array<WORD, 3> no_names{};
  };

  static INT_PTR CALLBACK OnMessage(HWND window, UINT message, WPARAM wide, LPARAM narrow);
  [[nodiscard]] LRESULT OnNotification(const NMHDR& notification);

  OwnPageEvents& events_;
  bool is_last_;
  Template template_;
};

}  // namespace pelora::windows::test
