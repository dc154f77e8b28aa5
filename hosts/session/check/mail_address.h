// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace pelora::session {

/// Whether a text is a mailbox of RFC 5321: `local@domain`, with nothing before or behind.
///
/// The local part is words divided by dots, or stands in quotation marks; it has at most 64 bytes.
/// The domain is a name of labels with at most 63 letters, digits and inner hyphens each, 255 in
/// all, or an address in brackets (`[192.0.2.1]`, `[IPv6:2001:db8::1]`). The whole has at most 254,
/// since a path has 256 with its angle brackets. Characters beyond ASCII belong to an extension of
/// mail that not every server takes, and to no mailbox of this RFC.
[[nodiscard]] bool IsMailAddress(std::string_view text);

}  // namespace pelora::session
