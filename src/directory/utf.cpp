// SPDX-License-Identifier: Apache-2.0
#include "directory/utf.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace pelora {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

constexpr bool IsHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool IsLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

void AppendUtf8(std::string& text, char32_t point) {
  const auto continuation = [&](int shift) {
    text += static_cast<char>(0x80U | ((point >> shift) & 0x3FU));
  };
  if (point < 0x80) {
    text += static_cast<char>(point);
  } else if (point < 0x800) {
    text += static_cast<char>(0xC0U | (point >> 6));
    continuation(0);
  } else if (point < 0x10000) {
    text += static_cast<char>(0xE0U | (point >> 12));
    continuation(6);
    continuation(0);
  } else {
    text += static_cast<char>(0xF0U | (point >> 18));
    continuation(12);
    continuation(6);
    continuation(0);
  }
}

void AppendUtf16(std::u16string& text, char32_t point) {
  if (point < 0x10000) {
    text += static_cast<char16_t>(point);
    return;
  }
  text += static_cast<char16_t>(0xD800U + ((point - 0x10000U) >> 10));
  text += static_cast<char16_t>(0xDC00U + ((point - 0x10000U) & 0x3FFU));
}

/// Takes one code point off the front of `text`; a malformed byte is taken alone, as U+FFFD.
char32_t TakeCodePoint(std::string_view& text) {
  const auto byte = [&](std::size_t at) {
    return at < text.size() ? static_cast<std::uint8_t>(text[at]) : std::uint8_t{0};
  };
  const std::uint8_t lead = byte(0);
  std::size_t length = 1;
  char32_t point = lead;
  if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4;
    point = lead & 0x07U;
  } else if (lead >= 0xE0 && lead < 0xF0) {
    length = 3;
    point = lead & 0x0FU;
  } else if (lead >= 0xC2 && lead < 0xE0) {
    length = 2;
    point = lead & 0x1FU;
  } else if (lead >= 0x80) {
    text.remove_prefix(1);
    return kReplacement;
  }
  for (std::size_t at = 1; at < length; ++at) {
    if ((byte(at) & 0xC0U) != 0x80U) {
      text.remove_prefix(1);
      return kReplacement;
    }
    point = (point << 6) | (byte(at) & 0x3FU);
  }
  constexpr std::array<char32_t, 5> kSmallest = {0, 0, 0x80, 0x800, 0x10000};
  if (point < kSmallest.at(length) || point > 0x10FFFF) {
    text.remove_prefix(1);
    return kReplacement;
  }
  text.remove_prefix(length);
  return point;
}

/// How much of a text, from its beginning, are characters of ASCII: mostly all of it.
template <class Text>
std::size_t PlainLength(const Text& text) {
  std::size_t length = 0;
  while (length < text.size() &&
         static_cast<std::make_unsigned_t<typename Text::value_type>>(text[length]) < 0x80) {
    ++length;
  }
  return length;
}

}  // namespace

std::string ToUtf8(std::u16string_view text) {
  const std::size_t plain = PlainLength(text);
  std::string result;
  result.reserve(text.size());
  result.resize(plain);
  std::transform(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(plain), result.begin(),
                 [](char16_t unit) { return static_cast<char>(unit); });
  for (std::size_t at = plain; at < text.size(); ++at) {
    char32_t point = text[at];
    if (IsHighSurrogate(point) && at + 1 < text.size() && IsLowSurrogate(text[at + 1])) {
      ++at;
      point = 0x10000U + ((point - 0xD800U) << 10) + (text[at] - 0xDC00U);
    }
    AppendUtf8(result, point);
  }
  return result;
}

std::u16string ToUtf16(std::string_view text) {
  const std::size_t plain = PlainLength(text);
  std::u16string result;
  result.reserve(text.size());
  result.assign(text.begin(), text.begin() + plain);
  text.remove_prefix(plain);
  while (!text.empty()) AppendUtf16(result, TakeCodePoint(text));
  return result;
}

std::string FirstCharacters(std::string_view text, std::size_t count) {
  std::size_t end = 0;
  for (; end < text.size(); ++end) {
    const auto byte = static_cast<std::uint8_t>(text[end]);
    const bool starts_character = (byte & 0xC0U) != 0x80U;
    if (!starts_character) continue;
    const std::size_t units = byte >= 0xF0 ? 2 : 1;
    if (units > count) break;
    count -= units;
  }
  return std::string(text.substr(0, end));
}

}  // namespace pelora
