// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace pelora::session {

/// Where a text stops being UTF-8: the place of the first byte that belongs to no character of
/// Unicode in its shortest form. None for a text that is UTF-8 throughout.
[[nodiscard]] std::optional<std::size_t> FirstInvalidByte(std::string_view text);

/// Length in bytes of the character at the front of `text`; 0 when there is none.
[[nodiscard]] std::size_t CharacterLength(std::string_view text);

}  // namespace pelora::session
