// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace pelora::ldap {

/// A value as it stands in a search filter, with what would end or widen it escaped.
[[nodiscard]] std::string EscapeFilterValue(std::string_view value);

/// The filter that finds the objects of these names, one at least.
[[nodiscard]] std::string FilterOfNames(std::span<const std::string> dns);

/// How many of the first names, `most` at most, lie right below one container and can be looked for
/// there by the values that name them: those of CN that are written without escapes.
[[nodiscard]] std::size_t CountSiblings(std::span<const std::string> dns, std::size_t most);

/// The filter that finds such siblings right below their container. It may find others there whose
/// names a server takes for the same.
[[nodiscard]] std::string FilterOfSiblings(std::span<const std::string> siblings);

}  // namespace pelora::ldap
