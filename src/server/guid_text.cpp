// SPDX-License-Identifier: Apache-2.0
#include "server/guid_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>

namespace pelora {

std::string GuidText(const Guid& guid) {
  constexpr std::size_t kLength = 38;
  std::array<char, kLength + 1> text{};
  const auto& tail = guid.data4;
  std::snprintf(text.data(), text.size(), "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}",
                static_cast<unsigned int>(guid.data1), static_cast<unsigned int>(guid.data2),
                static_cast<unsigned int>(guid.data3), static_cast<unsigned int>(tail[0]),
                static_cast<unsigned int>(tail[1]), static_cast<unsigned int>(tail[2]),
                static_cast<unsigned int>(tail[3]), static_cast<unsigned int>(tail[4]),
                static_cast<unsigned int>(tail[5]), static_cast<unsigned int>(tail[6]),
                static_cast<unsigned int>(tail[7]));
  return {text.data(), kLength};
}

bool ParseGuid(std::string_view text, Guid& guid) {
  constexpr std::string_view kForm = "{xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}";
  if (text.size() != kForm.size()) return false;
  std::array<std::uint8_t, 16> bytes{};
  std::size_t digits = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (kForm[i] != 'x') {
      if (text[i] != kForm[i]) return false;
      continue;
    }
    std::uint8_t digit = 0;
    if (std::from_chars(&text[i], &text[i] + 1, digit, 16).ec != std::errc()) return false;
    std::uint8_t& byte = bytes[digits++ / 2];
    byte = static_cast<std::uint8_t>(byte << 4 | digit);
  }
  const auto word = [&bytes](std::size_t at) {
    return static_cast<std::uint16_t>(bytes[at] << 8 | bytes[at + 1]);
  };
  guid.data1 = static_cast<std::uint32_t>(word(0)) << 16 | word(2);
  guid.data2 = word(4);
  guid.data3 = word(6);
  std::copy(bytes.begin() + 8, bytes.end(), guid.data4.begin());
  return true;
}

}  // namespace pelora
