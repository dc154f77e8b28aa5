// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/hresult.h"

namespace pelora::windows {

/// Whether a status says that the directory could not be asked (no server, no connection, no time),
/// as against any answer of it, "not set" and "not allowed" among them.
[[nodiscard]] bool SaysUnreachable(HRESULT status);

}  // namespace pelora::windows
