// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>

#include "directory/utf.h"
#include "hosts/resources/block_reader.h"
#include "platform/one_of.h"

namespace pelora::resources {

/// Type or name of a resource, or what a template writes for one: a number or a string.
using ResourceName = OneOf<std::uint16_t, std::string>;

/// A text of a template in UTF-8. Most of them are plain, and templates are read for every sheet.
[[nodiscard]] inline std::string TextOf(const std::u16string& units) {
  const auto is_plain = [](char16_t unit) { return unit < 0x80; };
  if (!std::ranges::all_of(units, is_plain)) return ToUtf8(units);
  std::string text(units.size(), '\0');
  std::ranges::transform(units, text.begin(),
                         [](char16_t unit) { return static_cast<char>(unit); });
  return text;
}

/// Reads what templates and resource files write for a name: the mark 0xFFFF and a number, or a
/// string (a lone 0 is the empty string).
[[nodiscard]] inline ResourceName ReadNumberOrString(BlockReader& reader) {
  constexpr std::uint16_t kNumberFollows = 0xFFFF;
  BlockReader ahead = reader;
  if (ahead.Read<std::uint16_t>() == kNumberFollows) {
    reader = ahead;
    return reader.Read<std::uint16_t>();
  }
  return TextOf(reader.ReadTerminated());
}

}  // namespace pelora::resources
