// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "hosts/ldap/directory_store.h"

namespace pelora::ldap {

/// The values of an entry's attribute, in the directory's order; none when it has none or was not
/// asked for it. They go with the entry.
[[nodiscard]] inline const AttributeValues& ValuesOf(const Entry& entry,
                                                     std::string_view attribute) {
  static const AttributeValues kNone;
  const auto found = entry.attributes.find(attribute);
  return found == entry.attributes.end() ? kNone : found->second;
}

/// The first of them; empty when there is none.
[[nodiscard]] inline std::string FirstValue(const Entry& entry, std::string_view attribute) {
  const AttributeValues& values = ValuesOf(entry, attribute);
  return values.empty() ? std::string() : values.front();
}

}  // namespace pelora::ldap
