// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "hosts/changes/result.h"

namespace pelora::session {

/// Whether what a result tells was done, or only rehearsed.
enum class Done : std::uint8_t { kReally, kRehearsed };

/// A result as a JSON object on one line: result, dn, message, code; and dryRun, which is true, of
/// what was only rehearsed. A report of a run is one such line for each object.
[[nodiscard]] std::string ResultJson(const changes::Result& result, Done done = Done::kReally);

}  // namespace pelora::session
