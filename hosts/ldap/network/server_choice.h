// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "hosts/ldap/network/ldap_connection.h"
#include "hosts/ldap/network/network_options.h"
#include "hosts/ldap/network/server_name.h"

namespace pelora::ldap {

/// Finds the servers of a domain, in the order in which they are to be tried.
using ServerFinder = std::function<StoreStatus(std::vector<ServerName>& servers)>;

/// The servers of the domain that the user's ticket is for, as the domain name system tells. Each
/// name server is waited for as long as a connection.
[[nodiscard]] ServerFinder FindServersOfTicket(const NetworkOptions& options);

/// Which server a program works with: the one that was named, or else the first of the domain's
/// that can be reached, to which everything keeps as long as it can be. May be used on several
/// threads.
class ServerChoice {
 public:
  /// `options.server` is empty or a well-formed name.
  explicit ServerChoice(const NetworkOptions& options)
      : ServerChoice(options, FindServersOfTicket(options)) {}
  /// `find` may be called on several threads.
  ServerChoice(const NetworkOptions& options, ServerFinder find);

  /// Connects to the chosen server. One that was found and cannot be reached any more is given up
  /// for another of the domain's. `connection` is there when and only when that is a success.
  /// `stop` is the connection's.
  StoreStatus Connect(const std::stop_token& stop, std::shared_ptr<LdapConnection>& connection);

  /// None until the first connection, when none was named.
  [[nodiscard]] std::optional<ServerName> current() const;

 private:
  StoreStatus FindOther(const std::optional<ServerName>& unreachable, const std::stop_token& stop,
                        std::shared_ptr<LdapConnection>& connection);

  const NetworkOptions options_;
  const ServerFinder find_;
  const std::optional<ServerName> named_;
  mutable std::mutex mutex_;
  std::optional<ServerName> found_;
};

}  // namespace pelora::ldap
