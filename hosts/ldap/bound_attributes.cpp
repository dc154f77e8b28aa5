// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/bound_attributes.h"

#include <algorithm>

#include "directory/ascii_case.h"
#include "directory/attribute_catalogue.h"

namespace pelora::ldap {

std::vector<std::string> BoundAttributes() {
  std::vector<std::string> names;
  for (const Attribute& attribute : kAttributeCatalogue) names.emplace_back(attribute.name);
  return names;
}

bool IsBoundAttribute(std::string_view name) {
  return std::ranges::any_of(kAttributeCatalogue, [&](const Attribute& attribute) {
    return EqualsWithoutCase(name, attribute.name);
  });
}

}  // namespace pelora::ldap
