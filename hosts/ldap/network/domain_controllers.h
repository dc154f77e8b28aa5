// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <stop_token>
#include <string>
#include <vector>

#include "hosts/ldap/network/domains_around.h"
#include "hosts/ldap/network/known_domains.h"
#include "hosts/ldap/network/network_options.h"
#include "hosts/ldap/network/schema_cache.h"
#include "hosts/ldap/network/server_choice.h"
#include "hosts/ldap/search_place.h"

namespace pelora::ldap {

/// Gives what finds the servers of the domain that a realm is of.
using RealmServerFinder =
    std::function<ServerFinder(const NetworkOptions& options, const std::string& realm)>;

/// The controllers of the domains around a directory's own, for everything that one session opens:
/// each store of a domain works with the same one. May be used on several threads.
class DomainControllers {
 public:
  /// `options` are those of the directory's own servers.
  DomainControllers(NetworkOptions options, std::shared_ptr<SchemaCache> schemas,
                    RealmServerFinder find = &FindServersOfRealm);

  /// Opens a store on a controller of a domain, which has to prove that it is of that domain's
  /// realm. As `StoreOpener` otherwise.
  StoreStatus Open(const KnownDomain& domain, const std::stop_token& stop,
                   std::unique_ptr<IDirectoryStore>& store);
  /// Opens a store on a server of the forest's global catalog: the one that is worked with, if it
  /// is one, or else the first of those that the name servers tell that can be reached. It is for
  /// reading: what would be a change is refused (53).
  StoreStatus OpenCatalog(const KnownDomains& domains, const std::stop_token& stop,
                          std::unique_ptr<IDirectoryStore>& store);

 private:
  std::shared_ptr<ServerChoice> ChoiceFor(const KnownDomain& domain);

  const NetworkOptions options_;
  const std::shared_ptr<SchemaCache> schemas_;
  const RealmServerFinder find_;
  std::mutex mutex_;
  /// By the domains' names.
  std::map<std::string, std::shared_ptr<ServerChoice>> choices_;
};

/// The places in which objects of a directory can be looked for, for choosers: its own domain,
/// opened by `own`; where there are several, the whole forest and each of its domains, searched in
/// the global catalog; and each trusted domain, searched on a controller of its own. The store that
/// the finder is handed is asked only for what `around` does not know.
[[nodiscard]] PlaceFinder FindSearchPlaces(StoreOpener own,
                                           std::shared_ptr<DomainControllers> controllers,
                                           std::shared_ptr<DomainsAround> around);

}  // namespace pelora::ldap
