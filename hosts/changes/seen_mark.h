// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace pelora::changes {

/// Stands in LDIF before each value that an object has to have: a comment, which only our own
/// reader looks at.
inline constexpr std::string_view kSeenMark = "# only if ";

}  // namespace pelora::changes
