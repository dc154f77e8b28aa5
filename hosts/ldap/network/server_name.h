// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace pelora::ldap {

/// The port on which directory servers listen.
inline constexpr std::uint16_t kDirectoryPort = 389;
/// The same for a forest's global catalog.
inline constexpr std::uint16_t kCatalogPort = 3268;

/// A directory server: one name for one server, however it was spelled.
struct ServerName {
  /// In lower case, without a dot at its end.
  std::string host;
  std::uint16_t port = kDirectoryPort;

  /// The name as people write it, with the port only when it is not the usual one.
  [[nodiscard]] std::string Text() const;
  /// The host alone: an address stands in brackets only where a port may follow it.
  [[nodiscard]] std::string BareHost() const;
  /// The address as the LDAP library takes it.
  [[nodiscard]] std::string Uri() const;

  friend auto operator<=>(const ServerName&, const ServerName&) = default;
};

/// Reads `host`, `host:port` or `[address]:port`; nothing when the text is none of these or holds
/// letters that no host name has.
[[nodiscard]] std::optional<ServerName> ParseServerName(std::string_view text);

}  // namespace pelora::ldap
