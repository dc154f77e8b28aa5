// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace pelora::ctl {

/// A part of a text, without the blanks, tabs and carriage returns around it.
[[nodiscard]] constexpr std::string_view WithoutBlanks(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

}  // namespace pelora::ctl
