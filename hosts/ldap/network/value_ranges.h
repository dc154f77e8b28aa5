// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "hosts/ldap/directory_store.h"

namespace pelora::ldap {

/// An attribute of which the server has given only the first values.
struct UnfinishedAttribute {
  std::string name;
  /// Number of the first value that is missing.
  std::size_t next = 0;

  /// What to ask for to get the rest, or its next part.
  [[nodiscard]] std::string Request() const;

  friend bool operator==(const UnfinishedAttribute&, const UnfinishedAttribute&) = default;
};

/// Servers give the values of a long attribute in parts, unasked, under names such as
/// `member;range=0-1499`; the last part ends with `*`. Files what such names hold under the bare
/// name and gives the attributes that go on.
///
/// Each part has to begin with the value number `first` and to hold as many values as its name
/// says, and no attribute may come both in parts and whole: false otherwise. What `attributes` hold
/// then is of no use.
[[nodiscard]] bool FileRanges(AttributeMap& attributes, std::size_t first,
                              std::vector<UnfinishedAttribute>& unfinished);

}  // namespace pelora::ldap
