// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/commands/ascii_letters.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "hosts/session/utf8_check.h"

namespace pelora::session {
namespace {

constexpr std::uint32_t kAsciiEnd = 0x80;
/// The letters of Latin-1, in their order from U+00C0, and those of Latin Extended-A from U+0100.
/// "-" stands for what is no letter.
constexpr std::uint32_t kLatinBegin = 0xC0;
constexpr std::array<std::string_view, 0xC0> kLatin = {
    // U+00C0
    "a", "a", "a", "a", "ae", "a", "ae", "c", "e", "e", "e", "e", "i", "i", "i", "i",  //
    "d", "n", "o", "o", "o", "o", "oe", "-", "oe", "u", "u", "u", "ue", "y", "th", "ss", "a", "a",
    "a", "a", "ae", "a", "ae", "c", "e", "e", "e", "e", "i", "i", "i", "i",  //
    "d", "n", "o", "o", "o", "o", "oe", "-", "oe", "u", "u", "u", "ue", "y", "th", "y",
    // U+0100
    "a", "a", "a", "a", "a", "a", "c", "c", "c", "c", "c", "c", "c", "c", "d", "d",  //
    "d", "d", "e", "e", "e", "e", "e", "e", "e", "e", "e", "e", "g", "g", "g", "g",  //
    "g", "g", "g", "g", "h", "h", "h", "h", "i", "i", "i", "i", "i", "i", "i", "i",  //
    "i", "i", "ij", "ij", "j", "j", "k", "k", "k", "l", "l", "l", "l", "l", "l", "l", "l", "l", "l",
    "n", "n", "n", "n", "n", "n", "n", "n", "n", "o", "o", "o", "o",  //
    "oe", "oe", "oe", "oe", "r", "r", "r", "r", "r", "r", "s", "s", "s", "s", "s", "s", "s", "s",
    "t", "t", "t", "t", "t", "t", "u", "u", "u", "u", "u", "u", "u", "u",  //
    "ue", "ue", "u", "u", "w", "w", "y", "y", "y", "z", "z", "z", "z", "z", "z", "s"};
/// Marks that stand behind their letter. Two dots make an umlaut of it.
constexpr std::uint32_t kMarksBegin = 0x300;
constexpr std::uint32_t kMarksEnd = 0x370;
constexpr std::uint32_t kTwoDots = 0x308;
constexpr std::uint32_t kHardBlank = 0xA0;
/// Signs of punctuation beyond Latin.
constexpr std::uint32_t kSignsBegin = 0x2000;
constexpr std::uint32_t kSignsEnd = 0x2070;
constexpr std::uint32_t kCapitalSharpS = 0x1E9E;

/// Takes a character off the front of a text, which is UTF-8 and not empty.
std::uint32_t TakeCharacter(std::string_view& text) {
  constexpr std::uint32_t kTwoBytes = 0xC0;
  constexpr std::uint32_t kThreeBytes = 0xE0;
  constexpr std::uint32_t kFourBytes = 0xF0;
  constexpr std::uint32_t kRest = 0x3F;
  constexpr unsigned kRestBits = 6;
  std::uint32_t sign = static_cast<unsigned char>(text.front());
  std::size_t more = 0;
  if (sign >= kFourBytes) {
    more = 3;
    sign &= 0x07;
  } else if (sign >= kThreeBytes) {
    more = 2;
    sign &= 0x0F;
  } else if (sign >= kTwoBytes) {
    more = 1;
    sign &= 0x1F;
  }
  text.remove_prefix(1);
  for (; more > 0; --more) {
    sign = sign << kRestBits | (static_cast<unsigned char>(text.front()) & kRest);
    text.remove_prefix(1);
  }
  return sign;
}

bool IsVowel(const std::string& text) {
  return !text.empty() && std::string_view("aou").find(text.back()) != std::string_view::npos;
}

/// What stands for a character behind `text`; none for a letter without a counterpart.
std::optional<std::string_view> Counterpart(std::uint32_t sign, const std::string& text) {
  if (sign == kHardBlank) return "-";
  if (sign == kCapitalSharpS) return "ss";
  if (sign == kTwoDots && IsVowel(text)) return "e";
  if (sign >= kMarksBegin && sign < kMarksEnd) return "";
  if (sign >= kSignsBegin && sign < kSignsEnd) return "";
  if (sign >= kAsciiEnd && sign < kLatinBegin) return "";
  const std::size_t place = sign - kLatinBegin;
  if (sign < kLatinBegin || place >= kLatin.size()) return std::nullopt;
  return kLatin[place] == "-" ? "" : kLatin[place];
}

void AddAscii(char sign, std::string& text) {
  if (sign >= 'A' && sign <= 'Z') sign = static_cast<char>(sign - 'A' + 'a');
  const bool is_taken = (sign >= 'a' && sign <= 'z') || (sign >= '0' && sign <= '9') ||
                        sign == '-' || sign == '_' || sign == '.';
  if (is_taken) text += sign;
  if (sign == ' ' || sign == '\t') text += '-';
}

}  // namespace

std::optional<std::string> InAsciiLetters(std::string_view name) {
  if (FirstInvalidByte(name)) return std::nullopt;
  std::string text;
  while (!name.empty()) {
    const std::uint32_t sign = TakeCharacter(name);
    if (sign < kAsciiEnd) {
      AddAscii(static_cast<char>(sign), text);
      continue;
    }
    const std::optional<std::string_view> counterpart = Counterpart(sign, text);
    if (!counterpart) return std::nullopt;
    text += *counterpart;
  }
  // What stood at an end, or beside what fell away, divides nothing.
  const auto divides = [](char sign) { return sign == '-' || sign == '.'; };
  const auto both = [&](char left, char right) { return divides(left) && divides(right); };
  text.erase(std::unique(text.begin(), text.end(), both), text.end());
  while (!text.empty() && divides(text.back())) text.pop_back();
  while (!text.empty() && divides(text.front())) text.erase(0, 1);
  if (text.empty()) return std::nullopt;
  return text;
}

}  // namespace pelora::session
