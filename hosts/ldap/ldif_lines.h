// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace pelora::ldap {

/// The lines of one entry in an LDIF text, unfolded and without comments.
struct LdifBlock {
  /// Where it begins in the text, counted from 1.
  std::size_t line = 0;
  std::vector<std::string> lines;
  /// The first lines of the comments among them, without the mark.
  std::vector<std::string> comments{};
};

/// Splits a text at its empty lines. Lines end with a line feed, with or without a carriage return;
/// one that begins with a space goes on with the line above, also of a comment.
[[nodiscard]] std::vector<LdifBlock> SplitLdif(std::string_view text);

/// Whether an unfolded line gives an attribute a value of its own: `name: text` or `name:: base64`,
/// and not `name:< address`.
[[nodiscard]] bool IsLdifValue(std::string_view line);

}  // namespace pelora::ldap
