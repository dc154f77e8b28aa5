// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace pelora::session {

/// Whether a text is an LDAP search filter of RFC 4515, whole and in its parentheses; blanks may
/// stand around the filters that it is made of, as the common tools allow. Filters that lie more
/// than a hundred deep in others are none.
///
/// The tools' own readers take more (a filter without parentheses, a parenthesis within a value),
/// each something else; what they all agree on is this.
[[nodiscard]] bool IsSearchQuery(std::string_view text);

/// What keeps a text from being a search filter.
struct QueryFault {
  /// The byte of the text from which on it is none; the text's length when something is missing at
  /// its end.
  std::size_t position = 0;
  /// What is wrong there, without a full stop. It is a constant.
  std::string_view text;
};

/// The first fault of a text; none when it is a search filter.
[[nodiscard]] std::optional<QueryFault> FindQueryFault(std::string_view text);

}  // namespace pelora::session
