// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "hosts/windows/system_headers.h"

namespace pelora::windows {

/// Full path of a loaded module's file, however long; empty when the system does not tell.
[[nodiscard]] std::wstring ModulePath(HINSTANCE instance);

}  // namespace pelora::windows
