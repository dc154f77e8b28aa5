// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/json_text.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "hosts/session/utf8_check.h"
#include "hosts/session/visible_text.h"

namespace pelora::session {
namespace {

/// Control characters that may stand in JSON as they are.
std::string WithoutBareControls(std::string_view line) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string safe;
  safe.reserve(line.size());
  while (!line.empty()) {
    const std::string_view character =
        line.substr(0, std::max<std::size_t>(CharacterLength(line), 1));
    line.remove_prefix(character.size());
    if (!IsControl(character)) {
      safe += character;
      continue;
    }
    // None of them lies beyond four digits.
    const std::uint32_t code = CodePointOf(character);
    safe += "\\u";
    for (const int shift : {12, 8, 4, 0}) safe += kDigits[(code >> shift) & 0xF];
  }
  return safe;
}

}  // namespace

std::string JsonLine(const Json& value) {
  return WithoutBareControls(value.dump(-1, ' ', false, Json::error_handler_t::replace));
}

}  // namespace pelora::session
