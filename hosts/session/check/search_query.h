// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace pelora::session {

/// Where a text stops being a search filter, and what is wrong there.
struct QueryFault {
  /// The byte, from 0; the length of the text where something is missing at its end.
  std::size_t place = 0;
  /// "a closing parenthesis is missing"
  std::string_view reason;
};

/// Whether a text is an LDAP search filter of RFC 4515, whole and in its parentheses; blanks may
/// stand around the filters that it is made of, as the common tools allow. Filters that lie more
/// than a hundred deep in others are none.
///
/// The tools' own readers take more (a filter without parentheses, a parenthesis within a value),
/// each something else; what they all agree on is this.
[[nodiscard]] bool IsSearchQuery(std::string_view text);

/// The first fault of a text that is no such filter; none of one that is.
[[nodiscard]] std::optional<QueryFault> FindQueryFault(std::string_view text);

}  // namespace pelora::session
