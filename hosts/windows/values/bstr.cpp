// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/values/bstr.h"

#include <new>

#include "hosts/windows/values/wide_text.h"

namespace pelora::windows {

UniqueBstr MakeBstr(std::string_view text) {
  const std::wstring wide = ToWide(text);
  UniqueBstr bstr(SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size())));
  if (!bstr) throw std::bad_alloc();
  return bstr;
}

std::string TextOf(BSTR text) {
  if (text == nullptr) return {};
  return ToNarrow({text, SysStringLen(text)});
}

}  // namespace pelora::windows
