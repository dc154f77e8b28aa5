// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/bound_attributes.h"

#include <algorithm>

#include "directory/ascii_case.h"
#include "directory/attribute_catalogue.h"

namespace pelora::ldap {
namespace {

/// Shown as the object's name, and never written.
constexpr std::string_view kCommonName = "cn";

}  // namespace

std::vector<std::string> BoundAttributes() {
  std::vector<std::string> names = {std::string(kCommonName)};
  for (const Attribute& attribute : kAttributeCatalogue) names.emplace_back(attribute.name);
  return names;
}

bool IsBoundAttribute(std::string_view name) {
  if (EqualsWithoutCase(name, kCommonName)) return true;
  return std::ranges::any_of(kAttributeCatalogue, [&](const Attribute& attribute) {
    return EqualsWithoutCase(name, attribute.name);
  });
}

}  // namespace pelora::ldap
