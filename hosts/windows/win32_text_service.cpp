// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/win32_text_service.h"

#include "hosts/windows/system_headers.h"
#include "hosts/windows/values/wide_text.h"

namespace pelora::windows {

std::string Win32TextService::UpperCase(std::string_view text) const {
  const std::wstring wide = ToWide(text);
  if (wide.empty()) return {};
  const auto length = static_cast<int>(wide.size());
  // Case mapping keeps the number of units.
  std::wstring upper(wide.size(), L'\0');
  const int mapped = LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_UPPERCASE, wide.data(), length,
                                   upper.data(), length, nullptr, nullptr, 0);
  return mapped == length ? ToNarrow(upper) : std::string(text);
}

}  // namespace pelora::windows
