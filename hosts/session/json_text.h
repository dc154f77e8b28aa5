// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace pelora::session {

/// Keeps the order in which members were added.
using Json = nlohmann::ordered_json;

/// A value on one line, safe for a terminal: control characters are escaped, all of them, and bytes
/// that are no UTF-8 are replaced.
[[nodiscard]] std::string JsonLine(const Json& value);

}  // namespace pelora::session
