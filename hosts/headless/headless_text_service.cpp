// SPDX-License-Identifier: Apache-2.0
#include "hosts/headless/headless_text_service.h"

#include <wctype.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <system_error>

#include "directory/utf.h"

namespace pelora {
namespace {

constexpr bool IsPlain(char letter) { return static_cast<unsigned char>(letter) < 0x80; }
constexpr char PlainCapital(char letter) {
  return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

constexpr bool IsHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
constexpr bool IsLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

void Append(std::u16string& text, char32_t letter) {
  if (letter < 0x10000) {
    text.push_back(static_cast<char16_t>(letter));
    return;
  }
  text.push_back(static_cast<char16_t>(0xD800 + ((letter - 0x10000) >> 10)));
  text.push_back(static_cast<char16_t>(0xDC00 + ((letter - 0x10000) & 0x3FF)));
}

}  // namespace

locale_t HeadlessTextService::Unicode() const {
  if (!unicode_) {
    unicode_.reset(newlocale(LC_CTYPE_MASK, "C.UTF-8", static_cast<locale_t>(nullptr)));
    if (!unicode_) throw std::system_error(errno, std::generic_category(), "locale C.UTF-8");
  }
  return unicode_.get();
}

std::string HeadlessTextService::UpperCase(std::string_view text) const {
  // Most texts need no tables.
  if (std::ranges::all_of(text, &IsPlain)) {
    std::string upper(text);
    std::ranges::transform(upper, upper.begin(), &PlainCapital);
    return upper;
  }
  const std::u16string units = ToUtf16(text);
  std::u16string upper;
  upper.reserve(units.size());
  for (std::size_t index = 0; index < units.size(); ++index) {
    char32_t letter = units[index];
    if (IsHighSurrogate(units[index]) && index + 1 < units.size() &&
        IsLowSurrogate(units[index + 1])) {
      letter = 0x10000 + ((letter - 0xD800) << 10) + (units[++index] - 0xDC00U);
    }
    Append(upper, static_cast<char32_t>(towupper_l(static_cast<wint_t>(letter), Unicode())));
  }
  return ToUtf8(upper);
}

}  // namespace pelora
