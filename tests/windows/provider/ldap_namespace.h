// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/windows/system_headers.h"
#include "platform/ads.h"

namespace pelora::windows::test {

/// Puts a directory behind the system's paths `LDAP://...` for as long as it lives: whoever binds
/// such a path in this apartment, through the system's own functions, reaches `directory` (which
/// outlives it), whatever provider the system has.
///
/// One binding of an extension may be two calls here: where the first one fails, the system may try
/// once more without authentication.
class LdapNamespace {
 public:
  explicit LdapNamespace(IDirectoryService& directory);
  ~LdapNamespace();
  LdapNamespace(const LdapNamespace&) = delete;
  LdapNamespace& operator=(const LdapNamespace&) = delete;

 private:
  DWORD registration_ = 0;
};

}  // namespace pelora::windows::test
