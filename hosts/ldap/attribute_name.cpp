// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/attribute_name.h"

#include <algorithm>

#include "directory/ascii_case.h"

namespace pelora::ldap {

bool AttributeNameLess::operator()(std::string_view left, std::string_view right) const {
  return std::ranges::lexicographical_compare(left, right, {}, AsciiLowerCase, AsciiLowerCase);
}

}  // namespace pelora::ldap
