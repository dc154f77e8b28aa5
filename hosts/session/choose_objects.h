// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/choosers.h"

namespace pelora::session {

// What may be chosen, with the object picker's numbers.
inline constexpr std::uint32_t kUsersAndGroups = 0x3F2;
inline constexpr std::uint32_t kGroupsOnly = 0x3F0;
inline constexpr std::uint32_t kContacts = 0x400;
inline constexpr std::uint32_t kComputers = 0x800;

struct ObjectChoice {
  /// Any of the numbers above.
  std::uint32_t types = 0;
  bool takes_several = true;
};

/// Lets the person choose objects; their distinguished names, in the order chosen. None when
/// nothing was chosen, or the chooser could not be shown.
[[nodiscard]] std::vector<std::string> ChooseObjects(IChoosers& choosers, IDialog* owner,
                                                     const ObjectChoice& choice);

}  // namespace pelora::session
