// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/value_equality.h"

#include <cstdint>
#include <optional>

#include "hosts/ldap/attribute_value.h"
#include "hosts/ldap/case_fold.h"

namespace pelora::ldap {

std::string ComparisonKey(Syntax syntax, const std::string& value) {
  switch (syntax) {
    case Syntax::kString:
    case Syntax::kDistinguishedName:
    case Syntax::kStructuredName:
      return FoldCase(value);
    case Syntax::kInteger:
    case Syntax::kLargeInteger: {
      const std::optional<std::int64_t> number = ParseLargeInteger(value);
      return number ? std::to_string(*number) : value;
    }
    case Syntax::kBoolean:
    case Syntax::kOctets:
    case Syntax::kTime:
    case Syntax::kSecurityDescriptor:
      return value;
  }
  return value;
}

std::string EditingKey(Syntax syntax, const std::string& value) {
  return syntax == Syntax::kString ? value : ComparisonKey(syntax, value);
}

}  // namespace pelora::ldap
