// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "tests/handbook/shell.h"

namespace pelora::test {

/// A folder of the test program's own, gone when it ends. In `release` lies what this build hands
/// out, put together once, of the time 1700000000 and with a small module in place of the
/// extension's (`built.dll`).
[[nodiscard]] const std::string& HandedOut();

/// Runs a script in that folder, where `$source` and `$build` are the sources and the build; UTF-8
/// texts.
[[nodiscard]] ShellResult RunThere(const std::string& script);

/// What a script prints; that it goes well is expected here.
std::string OutputOf(const std::string& script);

}  // namespace pelora::test
