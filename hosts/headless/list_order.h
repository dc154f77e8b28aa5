// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace pelora {

/// Whether `left` stands before `right` in a sorted list box: marks before digits before letters,
/// upper and lower case alike, a beginning before what it begins. Texts that differ in case alone
/// stand before none.
[[nodiscard]] bool StandsBefore(std::string_view left, std::string_view right);

}  // namespace pelora
