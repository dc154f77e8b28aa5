// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "hosts/windows/values/unique_resource.h"

namespace pelora::windows {

/// A new BSTR of a UTF-8 text, characters 0 included; `std::bad_alloc` when there is no memory.
[[nodiscard]] UniqueBstr MakeBstr(std::string_view text);

/// The text of a BSTR over its whole length; the null BSTR is the empty text.
[[nodiscard]] std::string TextOf(BSTR text);

}  // namespace pelora::windows
