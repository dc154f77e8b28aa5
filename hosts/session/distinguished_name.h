// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace pelora::session {

/// Whether a text begins as a distinguished name does: with `CN=`, `OU=` or `DC=`, in any case.
[[nodiscard]] bool IsDistinguishedName(std::string_view text);

/// The name of the object that another lies right below: what follows its first part. Empty for a
/// name of one part.
[[nodiscard]] std::string_view ParentName(std::string_view dn);

}  // namespace pelora::session
