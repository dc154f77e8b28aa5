// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace pelora::session {

/// Whether a text begins as a distinguished name does: with `CN=`, `OU=` or `DC=`, in any case.
[[nodiscard]] bool IsDistinguishedName(std::string_view text);

}  // namespace pelora::session
