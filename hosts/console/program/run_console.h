// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace pelora::console {

/// Runs the program and gives its exit code (`ExitCode`).
[[nodiscard]] int RunConsole(int argc, char** argv);

}  // namespace pelora::console
