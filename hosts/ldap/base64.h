// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pelora::ldap {

/// Bytes in base 64, with its padding and without line breaks.
[[nodiscard]] std::string EncodeBase64(std::string_view bytes);

/// The bytes that a text in base 64 stands for; nothing for another text, one without its padding
/// included.
[[nodiscard]] std::optional<std::string> DecodeBase64(std::string_view text);

}  // namespace pelora::ldap
