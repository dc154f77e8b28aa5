// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace pelora::session {

/// A text (UTF-8) without the blanks around it, whatever alphabet they come from.
[[nodiscard]] std::string Trimmed(std::string_view text);

/// How long a text (UTF-8) is for the directory and for an edit control: a character beyond the
/// basic plane counts as two.
[[nodiscard]] std::size_t CharacterCount(std::string_view text);

}  // namespace pelora::session
