// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <lber.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

#include "hosts/ldap/network/kerberos_context.h"

namespace pelora::ldap {

/// What goes over a connection once both sides have signed in: packets, each with its length in
/// four bytes before it, each sealed. It stands between the LDAP library and the socket, which does
/// not block.
///
/// A packet that is longer than announced, that was not sealed, or that was changed on its way is a
/// failure of the connection; nothing of it comes through.
class SealedWire {
 public:
  /// The longest packet that is taken, as the server is told.
  static constexpr std::size_t kMostReceived = 65'536;

  /// Reads or writes as the socket below does: a number of bytes, 0 at the end, or -1 with `errno`.
  using Read = std::function<ber_slen_t(char* bytes, std::size_t size)>;
  using Write = std::function<ber_slen_t(const char* bytes, std::size_t size)>;

  /// `most_sent` is the longest packet that the server takes.
  SealedWire(std::unique_ptr<KerberosContext> context, std::size_t most_sent);

  /// Both as `Read` and `Write`, of what is sealed.
  ///
  /// A write that does not come through to the end says that nothing was written (`EAGAIN`), and
  /// has to be repeated as it was.
  ber_slen_t Receive(const Read& read, char* bytes, std::size_t size);
  ber_slen_t Send(const Write& write, const char* bytes, std::size_t size);
  /// Whether something can be received without asking the socket.
  [[nodiscard]] bool HasReceived() const { return taken_ < plain_.size(); }

 private:
  /// How long the packet is whose first bytes are there, its own length included; 0: too long.
  [[nodiscard]] std::size_t PacketSize() const;
  bool Open();
  bool Seal(const char* bytes, std::size_t size);

  std::unique_ptr<KerberosContext> context_;
  std::size_t most_plain_;
  std::string packet_;
  std::string plain_;
  std::size_t taken_ = 0;
  /// The packet being sent, how much of it has been, and what it holds.
  std::string outgoing_;
  std::size_t sent_ = 0;
  std::string sealed_;
};

/// Puts the wire between the library and its socket, where it stays. False when that cannot be
/// done.
[[nodiscard]] bool InstallWire(Sockbuf* socket, std::unique_ptr<SealedWire> wire);

}  // namespace pelora::ldap
