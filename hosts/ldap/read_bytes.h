// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace pelora::ldap {

/// How the reading of an open file ended.
enum class ReadEnd : std::uint8_t {
  kWhole,
  /// There is more than was asked for: `text` holds what is allowed of it.
  kTooLong,
  /// `errno` has the reason.
  kFailed,
};

/// Appends to `text` what is left of an open file, `most` bytes of it at most. A device or a pipe
/// may have no end.
[[nodiscard]] ReadEnd ReadBytes(int descriptor, std::size_t most, std::string& text);

}  // namespace pelora::ldap
