// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "server/registration_script.h"
#include "server/registry.h"

namespace pelora {

/// Writes what a script says: each key before what is below it, its values before its subkeys. A
/// key marked `ForceRemove` is emptied first. The first failure ends it and is returned; what was
/// written stays.
[[nodiscard]] HRESULT RegisterScript(const std::vector<ScriptKey>& keys,
                                     IClassesRegistry& registry);

/// Undoes it, last key first. A key is removed with everything below it, unless it is marked
/// `NoRemove`: of such a key only the script's own values and subkeys go. What is missing already
/// is no failure. The first failure ends it and is returned.
[[nodiscard]] HRESULT UnregisterScript(const std::vector<ScriptKey>& keys,
                                       IClassesRegistry& registry);

}  // namespace pelora
