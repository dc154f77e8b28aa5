// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "hosts/ldap/directory_store.h"

namespace pelora::ldap {

/// Whose ticket the program's user holds.
struct KerberosTicket {
  /// `name@REALM`.
  std::string principal;
  /// When it ends; none for one that does not.
  std::optional<std::chrono::system_clock::time_point> end{};

  /// The realm: the domain's name in capitals.
  [[nodiscard]] std::string Realm() const;
};

/// Looks at the user's ticket cache; nothing is asked of a server.
///
/// No ticket, or one that has expired, is 49, with a text that says how to get one.
[[nodiscard]] StoreStatus ReadKerberosTicket(KerberosTicket& ticket);

}  // namespace pelora::ldap
