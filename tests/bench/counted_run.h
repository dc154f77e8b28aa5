// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>

#include "tests/bench/bench_table.h"

namespace pelora::lab {

/// How a program is called that asks a server, or a file, for something.
using Command = std::function<std::string(const std::string& server)>;

/// Runs a command once, with the lab's server behind something that counts what is asked and
/// answered, and with its requests for memory counted. The time that it takes says nothing.
[[nodiscard]] Counts CountsOf(const Command& command);

/// Of a command that asks no server: its requests for memory.
[[nodiscard]] Counts CountsOf(const std::string& command);

}  // namespace pelora::lab
