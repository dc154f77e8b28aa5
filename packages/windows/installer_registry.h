// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>

#include "platform/hresult.h"

namespace pelora::packages {

/// Gives the text of a registration script by its resource number; `S_OK` or why there is none.
using ScriptReader = std::function<HRESULT(std::uint16_t resource, std::string& text)>;

/// What the module's own registration leaves in the registry, as elements of an installer's source:
/// one `RegistryValue` a line, in an `Include`. The module's path and folder stand as what the
/// installer puts in for them. Empty when the registration fails.
[[nodiscard]] std::string InstallerRegistry(const ScriptReader& read_script);

}  // namespace pelora::packages
