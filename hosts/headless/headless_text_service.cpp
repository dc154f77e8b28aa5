// SPDX-License-Identifier: Apache-2.0
#include "hosts/headless/headless_text_service.h"

#include <wctype.h>

#include <cerrno>
#include <cstdint>
#include <system_error>

#include "directory/utf.h"

namespace pelora {
namespace {

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

HeadlessTextService::HeadlessTextService()
    : unicode_(newlocale(LC_CTYPE_MASK, "C.UTF-8", static_cast<locale_t>(nullptr))) {
  if (!unicode_) throw std::system_error(errno, std::generic_category(), "locale C.UTF-8");
}

std::string HeadlessTextService::UpperCase(std::string_view text) const {
  const std::u16string units = ToUtf16(text);
  std::u16string upper;
  upper.reserve(units.size());
  for (std::size_t index = 0; index < units.size(); ++index) {
    char32_t letter = units[index];
    if (IsHighSurrogate(units[index]) && index + 1 < units.size() &&
        IsLowSurrogate(units[index + 1])) {
      letter = 0x10000 + ((letter - 0xD800) << 10) + (units[++index] - 0xDC00U);
    }
    Append(upper, static_cast<char32_t>(towupper_l(static_cast<wint_t>(letter), unicode_.get())));
  }
  return ToUtf8(upper);
}

}  // namespace pelora
