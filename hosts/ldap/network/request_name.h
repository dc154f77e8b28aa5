// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/ldap_status.h"

namespace pelora::ldap {

/// Whether a name can be sent: the library ends names at a zero and would send another one (34).
[[nodiscard]] inline StoreStatus CheckRequestName(const std::string& dn) {
  const std::size_t zero = dn.find('\0');
  if (zero == std::string::npos) return {};
  return {kLdapInvalidDnSyntax, "not a distinguished name: " + dn.substr(0, zero)};
}

}  // namespace pelora::ldap
