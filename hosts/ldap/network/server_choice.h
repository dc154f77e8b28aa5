// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <mutex>
#include <optional>

#include "hosts/ldap/network/ldap_connection.h"
#include "hosts/ldap/network/network_options.h"
#include "hosts/ldap/network/server_name.h"

namespace pelora::ldap {

/// Which server a program works with: the one that was named, or else the first of the domain's
/// that can be reached, to which everything keeps as long as it can be. May be used on several
/// threads.
class ServerChoice {
 public:
  /// `options.server` is empty or a well-formed name.
  explicit ServerChoice(const NetworkOptions& options);

  /// Connects to the chosen server. One that was found through the domain name system and cannot be
  /// reached any more is given up for another of the domain's. `stop` is the connection's.
  StoreStatus Connect(const std::stop_token& stop, std::shared_ptr<LdapConnection>& connection);

  /// None until the first connection, when none was named.
  [[nodiscard]] std::optional<ServerName> current() const;

 private:
  StoreStatus FindOther(const std::optional<ServerName>& unreachable, const std::stop_token& stop,
                        std::shared_ptr<LdapConnection>& connection);

  const NetworkOptions options_;
  const std::optional<ServerName> named_;
  mutable std::mutex mutex_;
  std::optional<ServerName> found_;
};

}  // namespace pelora::ldap
