// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace pelora::session {

/// A list of objects that somebody keeps: which objects, and what is shown of each of them.
struct View {
  std::string name;
  /// Distinguished name of the container; empty: the one that the user has chosen.
  std::string base{};
  /// With all that lies below the base.
  bool below = true;
  /// LDAP filter; empty: all objects.
  std::string filter{};
  /// Name of the rule of the check that finds the objects; empty: none.
  std::string rule{};
  /// `ListColumn::name` of each column, in their order.
  std::vector<std::string> columns{};

  [[nodiscard]] bool operator==(const View&) const = default;
};

}  // namespace pelora::session
