// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace pelora::ldap {

/// Orders names of attributes without regard to the case of ASCII letters.
struct AttributeNameLess {
  using is_transparent = void;
  bool operator()(std::string_view left, std::string_view right) const;
};

}  // namespace pelora::ldap
