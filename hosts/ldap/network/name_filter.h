// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace pelora::ldap {

/// A value as it stands in a search filter, with what would end or widen it escaped.
[[nodiscard]] std::string EscapeFilterValue(std::string_view value);

/// The filter that finds the objects of these names, one at least.
[[nodiscard]] std::string FilterOfNames(std::span<const std::string> dns);

}  // namespace pelora::ldap
