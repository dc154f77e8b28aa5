// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace pelora::console {

/// What the exception being handled says, for people. To be called within a `catch` block. That
/// memory has run out is said without any.
[[nodiscard]] std::string TextOfException();

}  // namespace pelora::console
