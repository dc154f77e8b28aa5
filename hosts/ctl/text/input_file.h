// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>

namespace pelora::ctl {

/// More is nothing that somebody wrote: a device without an end, or the wrong file.
inline constexpr std::size_t kMostInput = std::size_t{128} << 20;

/// Everything that is in a file; `-` is standard input. Throws `WrongUsage`: with the system's
/// reason when it cannot be read, and when it holds more than `most` bytes.
[[nodiscard]] std::string ReadInput(const std::string& path, std::size_t most = kMostInput);

/// The name under which messages speak of it.
[[nodiscard]] std::string InputName(const std::string& path);

}  // namespace pelora::ctl
