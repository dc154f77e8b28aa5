// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace pelora::resources {

/// A label's text (UTF-8) as it is read out: without its mnemonic mark, and "&&" as "&".
[[nodiscard]] inline std::string WithoutMnemonic(std::string_view label) {
  std::string plain;
  plain.reserve(label.size());
  for (std::size_t i = 0; i < label.size(); ++i) {
    // A mark at the very end marks nothing and is dropped too.
    if (label[i] == '&' && ++i == label.size()) break;
    plain += label[i];
  }
  return plain;
}

}  // namespace pelora::resources
