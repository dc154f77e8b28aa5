// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace pelora::ldap {

/// Names of attributes and classes compare as ASCII, without case.
[[nodiscard]] bool SameName(std::string_view left, std::string_view right);

/// Orders names as `SameName` compares them.
struct AttributeNameLess {
  using is_transparent = void;
  bool operator()(std::string_view left, std::string_view right) const;
};

}  // namespace pelora::ldap
