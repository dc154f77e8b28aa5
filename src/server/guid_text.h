// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "platform/guid.h"

namespace pelora {

/// An identifier as registries write it: upper-case hexadecimal with hyphens, in braces, 38
/// characters.
[[nodiscard]] std::string GuidText(const Guid& guid);

/// Reads an identifier as `GuidText` writes it, in either case; false leaves `guid` as it was.
[[nodiscard]] bool ParseGuid(std::string_view text, Guid& guid);

}  // namespace pelora
