// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <stop_token>
#include <string>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/network/ldap_api.h"

namespace pelora::ldap {

/// What every connection has to have: sealing by a key of at least so many bits.
inline constexpr unsigned kMinimumStrength = 56;

/// What came of signing in.
struct SignedIn {
  /// By how many bits the key is long that seals.
  unsigned sealed_bits = 0;
};

/// Whom one wants to sign in to.
struct WantedServer {
  /// An address or a name, without a port.
  std::string host;
  /// The realm of which it has to prove to be; empty: whichever knows it.
  std::string realm{};
};

/// Signs in to a server through GSSAPI with the user's Kerberos ticket, signing and sealing
/// everything that follows. Nothing else is tried, and nothing that the server says makes it less.
///
/// The codes are those of `LdapConnection::Open`; the text does not name the server.
[[nodiscard]] StoreStatus SignInWithTicket(LDAP* handle, const WantedServer& server,
                                           std::chrono::milliseconds timeout,
                                           const std::stop_token& stop, SignedIn& signed_in);

}  // namespace pelora::ldap
