// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <locale.h>

#include <cstddef>
#include <memory>
#include <string_view>
#include <type_traits>

namespace pelora::ctl {

/// How many columns of a terminal texts take: none for a character that stands on the one before
/// it, two for those of East Asia and for pictures. It knows what the C library knows, whatever the
/// locale of the program.
class TerminalColumns {
 public:
  TerminalColumns();

  /// Of a text in UTF-8 without control characters.
  [[nodiscard]] std::size_t Count(std::string_view text) const;

 private:
  struct Free {
    void operator()(locale_t locale) const { freelocale(locale); }
  };
  /// None where the system has no such locale: every character counts as one column then.
  std::unique_ptr<std::remove_pointer_t<locale_t>, Free> utf8_;
};

}  // namespace pelora::ctl
