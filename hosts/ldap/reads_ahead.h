// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>

namespace pelora::ldap {

/// What a store offers beside that writes many changes on another thread than the one that asks for
/// them: while the next changes are worked out, it reads what they will be worked out from.
class IReadsAhead {
 public:
  /// A `ReadMany` within the same `ModifyManyStrictly` will be about these, and may be answered
  /// with what they were at some moment between now and then. Others may come before it. What was
  /// announced before is not expected any more.
  virtual void Expect(std::span<const std::string> dns,
                      std::span<const std::string> attributes) = 0;

 protected:
  ~IReadsAhead() = default;
};

}  // namespace pelora::ldap
