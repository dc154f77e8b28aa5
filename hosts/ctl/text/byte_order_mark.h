// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace pelora::ctl {

/// A text without the mark of UTF-8 that some programs write before it.
[[nodiscard]] constexpr std::string_view WithoutByteOrderMark(std::string_view text) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  if (text.starts_with(kMark)) text.remove_prefix(kMark.size());
  return text;
}

}  // namespace pelora::ctl
