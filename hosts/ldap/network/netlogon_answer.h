// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pelora::ldap {

/// What a domain controller says of itself, and of where the one who asks is.
///
/// It came over the network without any proof: it says which server to try first, and nothing else
/// may hang on it.
struct NetlogonAnswer {
  /// The domain and the server, as the domain name system has them.
  std::string domain{};
  std::string host{};
  /// The site in which the server is, and the one in which it takes the asking machine to be. Empty
  /// when it does not know.
  std::string site{};
  std::string client_site{};
  /// It is in the asking machine's site, or serves it.
  bool is_closest = false;
  bool is_writable = false;

  friend bool operator==(const NetlogonAnswer&, const NetlogonAnswer&) = default;
};

/// Reads the value `Netlogon` as a server gives it to who asks for version 5 with names; nothing
/// when it is anything else, or is not all there.
[[nodiscard]] std::optional<NetlogonAnswer> ReadNetlogonAnswer(std::string_view bytes);

/// Whether a text may be the name of a site: a single label of the domain name system.
[[nodiscard]] bool IsSiteName(std::string_view text);

}  // namespace pelora::ldap
