// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>

#include "hosts/windows/system_headers.h"

namespace pelora::windows::test {

/// A page of a sheet without any control, as large as the user tab. It outlives the pages made of
/// it: they are laid out from its memory.
class BlankPage {
 public:
  BlankPage() = default;
  BlankPage(const BlankPage&) = delete;
  BlankPage& operator=(const BlankPage&) = delete;

  /// A new page, for a sheet to take over.
  [[nodiscard]] HPROPSHEETPAGE Make();

 private:
  struct Template {
    DLGTEMPLATE head = {.style = WS_CHILD | WS_DISABLED | WS_CAPTION,
                        .dwExtendedStyle = 0,
                        .cdit = 0,
                        .x = 0,
                        .y = 0,
                        .cx = 271,
                        .cy = 228};
    /// Neither menu nor class nor title.
    std::array<WORD, 3> no_names{};
  };

  Template template_;
};

}  // namespace pelora::windows::test
