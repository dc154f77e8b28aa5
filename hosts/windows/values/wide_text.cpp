// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/values/wide_text.h"

#include "directory/utf.h"

namespace pelora::windows {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

std::wstring ToWide(std::string_view text) {
  const std::u16string wide = ToUtf16(text);
  return {wide.begin(), wide.end()};
}

std::string ToNarrow(std::wstring_view text) {
  return ToUtf8(std::u16string(text.begin(), text.end()));
}

}  // namespace pelora::windows
