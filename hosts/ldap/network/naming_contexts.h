// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pelora::ldap {

/// The parts that a server's directory consists of, by the names of their bases.
class NamingContexts {
 public:
  NamingContexts() = default;
  explicit NamingContexts(const std::vector<std::string>& bases);

  /// The base of the part that `dn` lies in; empty when it lies in none, as far as its spelling
  /// tells.
  [[nodiscard]] const std::string& BaseOf(std::string_view dn) const;

 private:
  struct Context {
    std::string base;
    std::string folded;
  };
  /// The deepest first: one may lie within another.
  std::vector<Context> contexts_;
  std::string none_;
};

}  // namespace pelora::ldap
