// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/results/terminal_columns.h"

#include <wchar.h>

#include <algorithm>

#include "hosts/session/utf8_check.h"
#include "hosts/session/visible_text.h"

namespace pelora::ctl {
namespace {

/// Has the C library work in a locale on this thread while it lives.
class Within {
 public:
  explicit Within(locale_t locale) : before_(uselocale(locale)) {}
  Within(const Within&) = delete;
  Within& operator=(const Within&) = delete;
  ~Within() { uselocale(before_); }

 private:
  locale_t before_;
};

bool IsAscii(std::string_view text) {
  return std::ranges::all_of(text, [](unsigned char letter) { return letter < 0x80; });
}

}  // namespace

TerminalColumns::TerminalColumns() : utf8_(newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)) {}

std::size_t TerminalColumns::Count(std::string_view text) const {
  if (IsAscii(text)) return text.size();
  // Null leaves the thread's locale as it is, of which nothing is asked then.
  const Within utf8(utf8_.get());
  std::size_t columns = 0;
  while (!text.empty()) {
    const std::size_t length = std::max<std::size_t>(session::CharacterLength(text), 1);
    const auto character = static_cast<wchar_t>(session::CodePointOf(text.substr(0, length)));
    const int width = utf8_ == nullptr ? 1 : wcwidth(character);
    // What the library does not know is most likely a character like others.
    columns += width < 0 ? 1 : static_cast<std::size_t>(width);
    text.remove_prefix(length);
  }
  return columns;
}

}  // namespace pelora::ctl
