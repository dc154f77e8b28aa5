// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace pelora::resources {

/// What our own faces say for a label of a template: the unit of sizes as it is written everywhere
/// else. The module itself shows its templates as they are.
[[nodiscard]] constexpr std::string_view ShownText(std::string_view label) {
  return label == "Mb" ? "MB" : label;
}

}  // namespace pelora::resources
