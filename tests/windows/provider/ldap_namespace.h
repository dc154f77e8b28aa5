// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <optional>

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
  /// What objects answer from now on when they are told to read everything. Unless it is set they
  /// do not know how to, and read when they are asked for something.
  void AnswerReading(HRESULT status) { *reading_ = status; }
  /// What is opened from now on is nothing: every question for an interface is answered with
  /// `status`, a success, and without one.
  void OpenNothing(HRESULT status) { *nothing_ = status; }
  ~LdapNamespace();
  LdapNamespace(const LdapNamespace&) = delete;
  LdapNamespace& operator=(const LdapNamespace&) = delete;

 private:
  DWORD registration_ = 0;
  std::shared_ptr<HRESULT> reading_ = std::make_shared<HRESULT>(E_NOTIMPL);
  std::shared_ptr<std::optional<HRESULT>> nothing_ = std::make_shared<std::optional<HRESULT>>();
};

}  // namespace pelora::windows::test
