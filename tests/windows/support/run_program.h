// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "hosts/windows/system_headers.h"

namespace pelora::windows::test {

/// What `RunProgram` gives when there is no program to run.
inline constexpr DWORD kNotStarted = 0xFFFFFFFF;

/// Runs a program to its end and gives its exit code.
[[nodiscard]] DWORD RunProgram(const std::wstring& command_line);

}  // namespace pelora::windows::test
