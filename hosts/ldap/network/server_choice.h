// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string>

#include "hosts/ldap/network/ldap_connection.h"
#include "hosts/ldap/network/nearest_servers.h"
#include "hosts/ldap/network/network_options.h"
#include "hosts/ldap/network/server_name.h"

namespace pelora::ldap {

/// Finds the servers of a domain, in the order in which they are to be tried. `stop` may cut short
/// what is asked of them.
using ServerFinder = std::function<StoreStatus(const std::stop_token& stop, DomainServers& found)>;

/// The servers of the domain that the user's ticket is for, the nearest first. Each name server is
/// waited for as long as a connection.
[[nodiscard]] ServerFinder FindServersOfTicket(const NetworkOptions& options);
/// The same of the domain that a realm is of.
[[nodiscard]] ServerFinder FindServersOfRealm(const NetworkOptions& options,
                                              const std::string& realm);

/// The server that a program works with, and how it came to be that one.
struct ChosenServer {
  ServerName name;
  /// It was named, not found; nothing else is known then.
  bool is_named = false;
  /// The site whose servers were wanted first; empty when nobody has said which one that is.
  std::string wanted_site{};
  /// What it said of itself when it was found, if anything.
  std::optional<NetlogonAnswer> told{};
  bool is_near = false;
  /// No other one was found with it.
  bool is_only = false;
  /// By how many bits the key is long that seals the last connection.
  unsigned sealed_bits = 0;
  /// Where changes are sent to, once it has named another server for them.
  std::optional<ServerName> writer{};
};

/// Which server a program works with: the one that was named, or else the nearest of the domain's
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

  /// Connects to another server than `left`, which took the connection and was lost before it was
  /// of any use. A server that was named has no other (-1).
  StoreStatus ConnectElsewhere(const ServerName& left, const std::stop_token& stop,
                               std::shared_ptr<LdapConnection>& connection);

  /// Connects to the server that `home`, the chosen one, has named for changes. It has to be of
  /// `realm`, the realm of `home`, which has to say so itself (10); what comes of it is as with
  /// `LdapConnection::Open` but for -5, which is -1: nothing was sent. The text says who
  /// named it.
  StoreStatus ConnectForWriting(const ServerName& name, const ServerName& home,
                                const std::string& realm, const std::stop_token& stop,
                                std::shared_ptr<LdapConnection>& connection);

  /// Whether the servers are those of a global catalog, where nothing is written.
  [[nodiscard]] bool is_of_catalog() const { return options_.is_catalog; }
  /// None until the first connection, when none was named.
  [[nodiscard]] std::optional<ServerName> current() const;
  [[nodiscard]] std::optional<ChosenServer> chosen() const;

 private:
  StoreStatus FindOther(const std::optional<ServerName>& unreachable, const std::stop_token& stop,
                        std::shared_ptr<LdapConnection>& connection);
  void NoteSealing(const LdapConnection& connection);

  const NetworkOptions options_;
  /// The same for servers beside which there are others.
  const NetworkOptions hurried_;
  const ServerFinder find_;
  const bool is_named_;
  mutable std::mutex mutex_;
  std::optional<ChosenServer> chosen_;
};

}  // namespace pelora::ldap
