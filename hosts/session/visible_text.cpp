// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/visible_text.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "hosts/session/utf8_check.h"

namespace pelora::session {
namespace {

constexpr std::string_view kDigits = "0123456789ABCDEF";

void AppendHex(std::string& to, char byte) {
  const auto code = static_cast<std::uint8_t>(byte);
  to += kDigits[code >> 4];
  to += kDigits[code & 0xF];
}

struct CodePoints {
  std::uint32_t first;
  std::uint32_t last;
};

/// What is no sign but does something: control characters, and what turns the direction of text
/// around, so that it reads other than it is.
constexpr auto kControls = std::to_array<CodePoints>({
    {0x00, 0x1F},
    {0x7F, 0x9F},
    {0x061C, 0x061C},
    {0x200E, 0x200F},
    {0x202A, 0x202E},
    {0x2066, 0x2069},
});

}  // namespace

std::uint32_t CodePointOf(std::string_view character) {
  const auto first = static_cast<std::uint8_t>(character.front());
  if (character.size() == 1) return first;
  // The first byte of a longer character has a bit less of it for each byte that follows.
  std::uint32_t code = first & (0x7FU >> character.size());
  for (const char byte : character.substr(1)) {
    code = (code << 6) | (static_cast<std::uint8_t>(byte) & 0x3FU);
  }
  return code;
}

bool IsControl(std::string_view character) {
  const std::uint32_t code = CodePointOf(character);
  return std::ranges::any_of(kControls, [code](const CodePoints& range) {
    return range.first <= code && code <= range.last;
  });
}

std::string VisibleText(std::string_view text, std::string_view kept) {
  std::string visible;
  visible.reserve(text.size());
  while (!text.empty()) {
    const std::size_t length = CharacterLength(text);
    const std::string_view character = text.substr(0, length == 0 ? 1 : length);
    text.remove_prefix(character.size());
    const bool is_kept = character.size() == 1 && kept.find(character.front()) != kept.npos;
    if (is_kept || (length != 0 && !IsControl(character))) {
      visible += character;
      continue;
    }
    for (const char byte : character) {
      visible += "\\x";
      AppendHex(visible, byte);
    }
  }
  return visible;
}

std::string ValidText(std::string_view text) {
  std::string valid;
  valid.reserve(text.size());
  while (!text.empty()) {
    const std::size_t good = FirstInvalidByte(text).value_or(text.size());
    valid += text.substr(0, good);
    text.remove_prefix(good);
    if (text.empty()) break;
    valid += "\\x";
    AppendHex(valid, text.front());
    text.remove_prefix(1);
  }
  return valid;
}

std::string OnOneLine(std::string_view text) {
  std::string line;
  line.reserve(text.size());
  for (std::size_t place = 0; place < text.size(); ++place) {
    const bool is_pair = text.substr(place, 2) == "\r\n";
    const bool is_break = text[place] == '\r' || text[place] == '\n' || text[place] == '\t';
    line += is_break ? ' ' : text[place];
    if (is_pair) ++place;
  }
  return line;
}

std::string NameOnOneLine(std::string_view dn) {
  std::string line;
  line.reserve(dn.size());
  for (const char byte : dn) {
    if (byte != '\t' && byte != '\r' && byte != '\n') {
      line += byte;
      continue;
    }
    line += '\\';
    AppendHex(line, byte);
  }
  return line;
}

}  // namespace pelora::session
