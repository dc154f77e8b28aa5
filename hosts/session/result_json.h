// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "hosts/changes/result.h"

namespace pelora::session {

/// A result as a JSON object on one line: result, dn, message, code. A report of a run is one such
/// line for each object.
[[nodiscard]] std::string ResultJson(const changes::Result& result);

}  // namespace pelora::session
