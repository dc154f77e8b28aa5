// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <stop_token>
#include <string>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/network/network_directory_service.h"
#include "hosts/ldap/network/network_options.h"
#include "hosts/ldap/network/server_choice.h"
#include "hosts/ldap/search_place.h"
#include "hosts/ldap/store_opener.h"

namespace pelora::ldap {

/// A program's work with a directory on the network: its home server, the store on it for the
/// thread that opened the session, and the directory port over it. Everything bound from it goes
/// before it. What lies in another domain of the forest, or in one that is trusted, is asked of a
/// controller of that domain, and written there (`DomainsStore`).
///
///   std::unique_ptr<NetworkSession> session;
///   const StoreStatus status = NetworkSession::Open({.server = "dc1.example.org"}, session);
class NetworkSession {
 public:
  /// Connects at once. On failure `session` is left empty and `text` is one line that says why, as
  /// with `LdapConnection::Open`; a server name that is none is -9, and so is a site's. `stop` is
  /// as with `StoreOpener`.
  static StoreStatus Open(const NetworkOptions& options, std::unique_ptr<NetworkSession>& session,
                          const std::stop_token& stop = {});
  /// The same with servers that `find` finds, when none is named.
  static StoreStatus Open(const NetworkOptions& options, ServerFinder find,
                          std::unique_ptr<NetworkSession>& session,
                          const std::stop_token& stop = {});
  ~NetworkSession();
  NetworkSession(const NetworkSession&) = delete;
  NetworkSession& operator=(const NetworkSession&) = delete;

  [[nodiscard]] IDirectoryStore& store();
  /// What the home server says of itself is read once for it.
  [[nodiscard]] NetworkDirectoryService& service();
  /// Opens stores of the same server, each with a connection of its own, for worker threads; the
  /// schema is not read again for them. Outlives the session, if need be.
  [[nodiscard]] StoreOpener open_another() const;
  /// Finds the domains around the directory's own, for choosers. Outlives the session, if need be.
  [[nodiscard]] PlaceFinder find_places() const;
  /// The home server, as people write it: `dc1.example.org`, with the port if it is an unusual one.
  [[nodiscard]] std::string server() const;
  /// How it came to be that one. May be asked on any thread.
  [[nodiscard]] ChosenServer chosen() const;

 private:
  struct Parts;

  explicit NetworkSession(std::unique_ptr<Parts> parts);

  std::unique_ptr<Parts> parts_;
};

}  // namespace pelora::ldap
