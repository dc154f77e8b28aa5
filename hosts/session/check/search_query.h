// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace pelora::session {

/// Whether a text is an LDAP search filter of RFC 4515, whole and in its parentheses; blanks may
/// stand around the filters that it is made of, as the common tools allow. Filters that lie more
/// than a hundred deep in others are none.
///
/// The tools' own readers take more (a filter without parentheses, a parenthesis within a value),
/// each something else; what they all agree on is this.
[[nodiscard]] bool IsSearchQuery(std::string_view text);

}  // namespace pelora::session
