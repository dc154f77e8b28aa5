// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <string_view>

namespace pelora {

/// Whether two texts are equal apart from the case of ASCII letters, as the directory compares
/// keywords.
[[nodiscard]] constexpr bool EqualsWithoutCase(std::string_view left, std::string_view right) {
  constexpr auto kLowerCase = [](char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
  };
  return std::ranges::equal(left, right, {}, kLowerCase, kLowerCase);
}

}  // namespace pelora
