// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "hosts/session/own_values.h"

namespace pelora::session {

/// What logon name and address new users of a company get, as patterns (see `AddressPattern`):
/// `{first}.{last}` and `{first}.{last}@example.org`. Empty: none follows.
struct NamePatterns {
  std::string logon_name{};
  std::string address{};

  [[nodiscard]] bool operator==(const NamePatterns&) const = default;
};

/// Why they are none, as a sentence; empty when they are.
[[nodiscard]] std::string WhyWrong(const NamePatterns& patterns);

/// The logon name that follows from what a new user is called; no longer than the directory takes.
/// Empty without a pattern, and as long as something is missing for it.
[[nodiscard]] std::string LogonNameOf(const NamePatterns& patterns, const NewObjectKind& kind,
                                      const OwnValues& values);
/// The same of an address.
[[nodiscard]] std::string AddressOf(const NamePatterns& patterns, const OwnValues& values);

}  // namespace pelora::session
