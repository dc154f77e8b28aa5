// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pelora::session {

/// A name (UTF-8) as it stands before the "@" of an address: small letters and digits of ASCII,
/// `-`, `_` and `.`. Umlauts become two letters ("ä" is "ae", "ß" is "ss", "ø" is "oe"), other
/// marks fall off their letters ("é" is "e", "ł" is "l"). Blanks between words become a hyphen;
/// apostrophes, brackets and whatever else is no letter fall away.
///
/// None when nothing is left, or a letter has no counterpart: those of Greek, say.
[[nodiscard]] std::optional<std::string> InAsciiLetters(std::string_view name);

}  // namespace pelora::session
