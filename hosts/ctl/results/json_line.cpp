// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/results/json_line.h"

#include <algorithm>
#include <cstdint>

#include "hosts/session/utf8_check.h"
#include "hosts/session/visible_text.h"

namespace pelora::ctl {
namespace {

/// Control characters that may stand in JSON as they are.
std::string WithoutBareControls(std::string_view line) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string safe;
  safe.reserve(line.size());
  while (!line.empty()) {
    const std::string_view character =
        line.substr(0, std::max<std::size_t>(session::CharacterLength(line), 1));
    line.remove_prefix(character.size());
    if (!session::IsControl(character)) {
      safe += character;
      continue;
    }
    // None of them lies beyond four digits.
    const std::uint32_t code = session::CodePointOf(character);
    safe += "\\u";
    for (const int shift : {12, 8, 4, 0}) safe += kDigits[(code >> shift) & 0xF];
  }
  return safe;
}

}  // namespace

std::string JsonLine(const Json& value) {
  return WithoutBareControls(value.dump(-1, ' ', false, Json::error_handler_t::replace));
}

Json JsonOf(const FieldValue& value) {
  if (const auto* flag = std::get_if<bool>(&value)) return *flag;
  if (const auto* number = std::get_if<std::int64_t>(&value)) return *number;
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  if (const auto* list = std::get_if<std::vector<std::string>>(&value)) return *list;
  return {};
}

}  // namespace pelora::ctl
