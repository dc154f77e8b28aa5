// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/support/window_text.h"

#include "hosts/windows/values/wide_text.h"

namespace pelora::windows::test {

std::string TextOfWindow(HWND window) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  text.resize(
      static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return ToNarrow(text);
}

}  // namespace pelora::windows::test
