// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/attribute_name.h"

#include <algorithm>

namespace pelora::ldap {
namespace {

unsigned char Lower(char letter) {
  const bool is_capital = letter >= 'A' && letter <= 'Z';
  return static_cast<unsigned char>(is_capital ? letter - 'A' + 'a' : letter);
}

}  // namespace

bool SameName(std::string_view left, std::string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return Lower(a) == Lower(b); });
}

bool AttributeNameLess::operator()(std::string_view left, std::string_view right) const {
  return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end(),
                                      [](char a, char b) { return Lower(a) < Lower(b); });
}

}  // namespace pelora::ldap
