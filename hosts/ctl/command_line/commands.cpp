// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/commands/commands.h"

#include <algorithm>
#include <array>

#include "hosts/ctl/command_line/command.h"

namespace pelora::ctl {

std::span<const Command* const> Commands() {
  static const std::array kCommands = {
      &ShowCommand(), &ListCommand(),  &SetCommand(),  &NewCommand(),    &ApplyCommand(),
      &EditCommand(), &CheckCommand(), &UndoCommand(), &FieldsCommand(), &StatusCommand(),
  };
  return kCommands;
}

const Command* FindCommand(std::string_view name) {
  const auto found = std::ranges::find(Commands(), name, &Command::name);
  return found == Commands().end() ? nullptr : *found;
}

}  // namespace pelora::ctl
