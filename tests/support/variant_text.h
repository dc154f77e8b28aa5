// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <iosfwd>
#include <string>

#include "platform/variant.h"

namespace pelora {

/// A value as tests read it: `7`, `"text"`, `["a", "b"]`, `nothing`, `type 0x000B`.
[[nodiscard]] std::string ToText(const Variant& value);

/// Lets a failed expectation show the value.
void PrintTo(const Variant& value, std::ostream* out);

}  // namespace pelora
