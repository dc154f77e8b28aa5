// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/ctl/command_line/command.h"

namespace pelora::ctl {

// The commands, each in the source of its name.

[[nodiscard]] const Command& ShowCommand();
[[nodiscard]] const Command& ListCommand();
[[nodiscard]] const Command& SetCommand();
[[nodiscard]] const Command& NewCommand();
[[nodiscard]] const Command& ApplyCommand();
[[nodiscard]] const Command& EditCommand();
[[nodiscard]] const Command& CheckCommand();
[[nodiscard]] const Command& UndoCommand();
[[nodiscard]] const Command& FieldsCommand();
[[nodiscard]] const Command& StatusCommand();

}  // namespace pelora::ctl
