// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace pelora::session {

/// The values of a list as they are given: divided by `;`, in which `\;` and `\\` stand for `;` and
/// `\`; another backslash stays as it is. An empty text holds no values.
[[nodiscard]] std::vector<std::string> SplitList(std::string_view text);

/// The values in one text, from which `SplitList` gives them back.
[[nodiscard]] std::string JoinList(std::span<const std::string> values);

}  // namespace pelora::session
