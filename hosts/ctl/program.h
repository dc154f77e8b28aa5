// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>

#include "hosts/ctl/interruption.h"
#include "hosts/ctl/results/output.h"
#include "hosts/resources/resource_file.h"

namespace pelora::ctl {

/// What every command works with. It outlives the command.
struct Program {
  Output& output;
  Output& errors;
  Interruption& interruption;
  /// The dialogs.
  const resources::ResourceFile& module;
};

/// Runs the program and gives its exit code (`ExitCode`): the arguments are those behind its name.
[[nodiscard]] int RunProgram(std::span<const std::string> arguments);

/// One line about the program itself, on the errors' output.
void Tell(Program& program, const std::string& line);

}  // namespace pelora::ctl
