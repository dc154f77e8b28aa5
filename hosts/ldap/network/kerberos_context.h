// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "hosts/ldap/directory_store.h"

namespace pelora::ldap {

/// The client's side of a security context with one directory server, by the user's Kerberos
/// ticket.
///
/// The ticket is asked for the server by the name that it was given, `ldap/host`, and for no other:
/// no name server is asked what the host is called, nor what its address is called back, whatever
/// the machine's settings for Kerberos say. Who can forge such answers and holds the key of another
/// server would be taken for this one.
class KerberosContext {
 public:
  /// `host` is an address or a host's name, without a port. With a `realm` the ticket is one of
  /// that realm and of no other; without, of whichever the ticket servers know the name in (the
  /// library does not say which that was).
  explicit KerberosContext(std::string host, std::string realm = {});
  ~KerberosContext();
  KerberosContext(const KerberosContext&) = delete;
  KerberosContext& operator=(const KerberosContext&) = delete;

  /// Takes what the server said, nothing at first, and gives what it is to be told. Not after
  /// `is_established()`. No ticket for a server of this name is -2.
  StoreStatus Step(std::string_view token, std::string& answer);
  [[nodiscard]] bool is_established() const;

  /// Whether the established context is with the server that was named, which has proved to be it,
  /// and whether it seals with a key of at least `least_bits`: 49 and 13 otherwise.
  [[nodiscard]] StoreStatus Check(unsigned least_bits) const;
  /// The strength of the key, in bits as the mechanism rates it; 0 when it does not say.
  [[nodiscard]] unsigned Strength() const;

  enum class Protection { kSigned, kSealed };
  /// What goes over the wire for `plain`; false when the library cannot make it.
  [[nodiscard]] bool Wrap(std::string_view plain, Protection protection, std::string& wrapped);
  /// The other way round; false when it is not from this server, was changed on its way, or is
  /// protected by less than `protection`.
  [[nodiscard]] bool Unwrap(std::string_view wrapped, Protection protection, std::string& plain);
  /// How much may be sealed at a time so that no more than `most` goes over the wire; 0 when
  /// nothing fits.
  [[nodiscard]] std::size_t MostPlain(std::size_t most) const;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace pelora::ldap
