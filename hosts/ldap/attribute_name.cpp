// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/attribute_name.h"

#include <algorithm>

#include "directory/ascii_case.h"

namespace pelora::ldap {

bool AttributeNameLess::operator()(std::string_view left, std::string_view right) const {
  // Maps of attributes are looked into all the time.
  const std::size_t common = std::min(left.size(), right.size());
  for (std::size_t at = 0; at < common; ++at) {
    if (left[at] == right[at]) continue;
    const char one = AsciiLowerCase(left[at]);
    const char other = AsciiLowerCase(right[at]);
    if (one != other) return one < other;
  }
  return left.size() < right.size();
}

}  // namespace pelora::ldap
