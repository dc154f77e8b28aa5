// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace pelora::ctl {

/// Everything that is in a file; `-` is standard input. Throws `WrongUsage` with the system's
/// reason when it cannot be read.
[[nodiscard]] std::string ReadInput(const std::string& path);

/// The name under which messages speak of it.
[[nodiscard]] std::string InputName(const std::string& path);

}  // namespace pelora::ctl
