// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace pelora::windows {

/// Between the system's UTF-16 and the ports' UTF-8, without loss whatever the code page of the
/// system.
[[nodiscard]] std::wstring ToWide(std::string_view text);
[[nodiscard]] std::string ToNarrow(std::wstring_view text);

}  // namespace pelora::windows
