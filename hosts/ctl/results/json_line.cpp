// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/results/json_line.h"

#include <cstdint>

namespace pelora::ctl {
namespace {

/// DEL and the second set of control characters, which may stand in JSON as they are.
std::string WithoutBareControls(const std::string& line) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string safe;
  safe.reserve(line.size());
  for (std::size_t place = 0; place < line.size(); ++place) {
    const auto byte = static_cast<std::uint8_t>(line[place]);
    const auto next = static_cast<std::uint8_t>(place + 1 < line.size() ? line[place + 1] : 0);
    const bool is_second_set = byte == 0xC2 && next >= 0x80 && next < 0xA0;
    if (byte != 0x7F && !is_second_set) {
      safe += line[place];
      continue;
    }
    const std::uint8_t code = is_second_set ? next : byte;
    safe += "\\u00";
    safe += kDigits[code >> 4];
    safe += kDigits[code & 0xF];
    if (is_second_set) ++place;
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
