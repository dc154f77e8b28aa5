// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "platform/guid.h"

namespace pelora {

/// An identifier as registries write it: upper-case hexadecimal with hyphens, in braces, 38
/// characters.
[[nodiscard]] std::string GuidText(const Guid& guid);

}  // namespace pelora
