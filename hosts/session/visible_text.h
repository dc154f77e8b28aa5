// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace pelora::session {

/// Whether a character, one whole sequence of UTF-8, is a control character: one of ASCII, DEL, of
/// the second set (U+0080 to U+009F), or one that changes the direction of the text.
[[nodiscard]] bool IsControl(std::string_view character);
/// The number of a character, one whole sequence of UTF-8.
[[nodiscard]] std::uint32_t CodePointOf(std::string_view character);

/// `text` as a terminal may get it: control characters and bytes that are no UTF-8 are written
/// `\xNN`, byte by byte. What stands in `kept` stays.
[[nodiscard]] std::string VisibleText(std::string_view text, std::string_view kept = {});

/// `text` in UTF-8, whatever it is: bytes that are none are written `\xNN`.
[[nodiscard]] std::string ValidText(std::string_view text);

/// `text` on one line of a table with tabs: line breaks and tabs become blanks, CR and LF together
/// one.
[[nodiscard]] std::string OnOneLine(std::string_view text);

/// A distinguished name on one line of a table with tabs: line breaks and tabs in hexadecimal
/// behind a backslash, which is the same name.
[[nodiscard]] std::string NameOnOneLine(std::string_view dn);

}  // namespace pelora::session
