// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/utf8_check.h"

#include <array>
#include <cstdint>

namespace pelora::session {
namespace {

/// First bytes of characters: what they look like, how many bytes follow, and the bounds of the
/// second byte, which keep out longer forms than needed, surrogates and what lies beyond Unicode.
struct Lead {
  std::uint8_t first;
  std::uint8_t last;
  std::uint8_t following;
  std::uint8_t second_first = 0x80;
  std::uint8_t second_last = 0xBF;
};

constexpr std::array<Lead, 9> kLeads = {{
    {0x00, 0x7F, 0},
    {0xC2, 0xDF, 1},
    {0xE0, 0xE0, 2, 0xA0, 0xBF},
    {0xE1, 0xEC, 2},
    {0xED, 0xED, 2, 0x80, 0x9F},
    {0xEE, 0xEF, 2},
    {0xF0, 0xF0, 3, 0x90, 0xBF},
    {0xF1, 0xF3, 3},
    {0xF4, 0xF4, 3, 0x80, 0x8F},
}};

std::uint8_t ByteAt(std::string_view text, std::size_t place) {
  return static_cast<std::uint8_t>(text[place]);
}

bool IsWhole(std::string_view text, const Lead& lead) {
  if (text.size() <= lead.following) return false;
  for (std::size_t place = 1; place <= lead.following; ++place) {
    const std::uint8_t byte = ByteAt(text, place);
    const bool is_second = place == 1;
    if (byte < (is_second ? lead.second_first : 0x80)) return false;
    if (byte > (is_second ? lead.second_last : 0xBF)) return false;
  }
  return true;
}

}  // namespace

std::size_t CharacterLength(std::string_view text) {
  if (text.empty()) return 0;
  for (const Lead& lead : kLeads) {
    if (ByteAt(text, 0) < lead.first || ByteAt(text, 0) > lead.last) continue;
    return IsWhole(text, lead) ? std::size_t{lead.following} + 1 : 0;
  }
  return 0;
}

std::optional<std::size_t> FirstInvalidByte(std::string_view text) {
  std::size_t place = 0;
  while (place < text.size()) {
    if (ByteAt(text, place) < 0x80) {
      ++place;
      continue;
    }
    const std::size_t length = CharacterLength(text.substr(place));
    if (length == 0) return place;
    place += length;
  }
  return std::nullopt;
}

}  // namespace pelora::session
