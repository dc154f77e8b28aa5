// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "directory/utf.h"
#include "hosts/resources/block_reader.h"

namespace pelora::resources {

/// Reads what templates and resource files write for a name: the mark 0xFFFF and a number, or a
/// string (a lone 0 is the empty string).
[[nodiscard]] inline std::variant<std::uint16_t, std::string> ReadNumberOrString(
    BlockReader& reader) {
  constexpr std::uint16_t kNumberFollows = 0xFFFF;
  BlockReader ahead = reader;
  if (ahead.Read<std::uint16_t>() == kNumberFollows) {
    reader = ahead;
    return reader.Read<std::uint16_t>();
  }
  return ToUtf8(reader.ReadTerminated());
}

}  // namespace pelora::resources
