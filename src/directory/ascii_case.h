// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <string_view>

namespace pelora {

/// A letter of ASCII in lower case; any other character as it is.
constexpr char AsciiLowerCase(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

/// The same in capitals.
constexpr char AsciiUpperCase(char letter) {
  return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

/// Whether two texts are the same but for the case of ASCII letters.
constexpr bool EqualsWithoutCase(std::string_view left, std::string_view right) {
  return std::ranges::equal(left, right, {}, AsciiLowerCase, AsciiLowerCase);
}

}  // namespace pelora
