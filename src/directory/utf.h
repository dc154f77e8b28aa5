// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace pelora {

/// UTF-16 to UTF-8. A surrogate without its partner is kept as its three-byte form, so that
/// converting back gives the same text: nothing is lost, and nothing else can come to mean the
/// same.
[[nodiscard]] std::string ToUtf8(std::u16string_view text);

/// UTF-8 (as `ToUtf8` gives it) to UTF-16. A byte that belongs to no valid sequence becomes U+FFFD.
[[nodiscard]] std::u16string ToUtf16(std::string_view text);

/// The first `count` characters of a text in UTF-8, or all of it, counted as the platform's edit
/// controls count: one beyond the basic plane is two. None is cut in two.
[[nodiscard]] std::string FirstCharacters(std::string_view text, std::size_t count);

}  // namespace pelora
