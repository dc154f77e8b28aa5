// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <ldap.h>

#include <memory>

namespace pelora::ldap {

struct LdapMessageFree {
  void operator()(LDAPMessage* message) const { ldap_msgfree(message); }
};
/// An answer of the server, or the chain of messages that makes one up.
using LdapMessagePtr = std::unique_ptr<LDAPMessage, LdapMessageFree>;

struct LdapControlFree {
  void operator()(LDAPControl* control) const { ldap_control_free(control); }
};
using LdapControlPtr = std::unique_ptr<LDAPControl, LdapControlFree>;

struct LdapControlsFree {
  void operator()(LDAPControl** controls) const { ldap_controls_free(controls); }
};
/// The controls that came with an answer; null when none did.
using LdapControlsPtr = std::unique_ptr<LDAPControl*, LdapControlsFree>;

struct LdapMemoryFree {
  void operator()(void* memory) const { ldap_memfree(memory); }
};
template <class T>
using LdapMemoryPtr = std::unique_ptr<T, LdapMemoryFree>;

/// A value that lives in somebody else's bytes; the library asks for it without `const`.
[[nodiscard]] inline berval BorrowedValue(const char* bytes, std::size_t size) {
  return {.bv_len = size, .bv_val = const_cast<char*>(bytes)};
}

}  // namespace pelora::ldap
