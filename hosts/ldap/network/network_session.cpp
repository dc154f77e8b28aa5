// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/network_session.h"

#include <utility>

#include "hosts/ldap/known_root.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/network/domain_controllers.h"
#include "hosts/ldap/network/domains_store.h"
#include "hosts/ldap/network/network_store.h"
#include "hosts/ldap/network/schema_cache.h"

namespace pelora::ldap {
namespace {

/// For the home server, with the domains around its own.
StoreOpener MakeOpener(std::shared_ptr<ServerChoice> servers, std::shared_ptr<SchemaCache> schemas,
                       std::shared_ptr<DomainControllers> controllers,
                       std::shared_ptr<DomainsAround> around) {
  DomainOpener open_domain = [controllers = std::move(controllers)](
                                 const KnownDomain& domain, const std::stop_token& stop,
                                 std::unique_ptr<IDirectoryStore>& store) {
    return controllers->Open(domain, stop, store);
  };
  return [servers = std::move(servers), schemas = std::move(schemas), around = std::move(around),
          open_domain = std::move(open_domain)](std::unique_ptr<IDirectoryStore>& store,
                                                const std::stop_token& stop) {
    store.reset();
    std::unique_ptr<NetworkStore> home;
    StoreStatus status = NetworkStore::Open(servers, schemas, stop, home);
    if (!status.Ok()) return status;
    store = std::make_unique<DomainsStore>(std::move(home), around, open_domain);
    store->StopOn(stop);
    return status;
  };
}

/// For the servers that paths name.
ServerStoreOpener MakeServerOpener(const NetworkOptions& options,
                                   std::shared_ptr<SchemaCache> schemas) {
  return [options, schemas = std::move(schemas)](const ServerName& server,
                                                 std::unique_ptr<IDirectoryStore>& store) {
    NetworkOptions to_server = options;
    to_server.server = server.Text();
    std::unique_ptr<NetworkStore> opened;
    StoreStatus status =
        NetworkStore::Open(std::make_shared<ServerChoice>(to_server), schemas, {}, opened);
    store = std::move(opened);
    return status;
  };
}

}  // namespace

struct NetworkSession::Parts {
  Parts(std::unique_ptr<IDirectoryStore> opened, StoreOpener opener, PlaceFinder finder,
        std::shared_ptr<ServerChoice> choice, const ServerName& home, ServerStoreOpener open_server)
      : store(std::move(opened)),
        open_another(std::move(opener)),
        find_places(std::move(finder)),
        servers(std::move(choice)),
        root(*store),
        service(home, root, std::move(open_server)) {}

  std::unique_ptr<IDirectoryStore> store;
  StoreOpener open_another;
  PlaceFinder find_places;
  std::shared_ptr<ServerChoice> servers;
  /// Each tab binds the root before it binds anything else.
  KnownRoot root;
  NetworkDirectoryService service;
};

NetworkSession::NetworkSession(std::unique_ptr<Parts> parts) : parts_(std::move(parts)) {}

NetworkSession::~NetworkSession() = default;

StoreStatus NetworkSession::Open(const NetworkOptions& options,
                                 std::unique_ptr<NetworkSession>& session,
                                 const std::stop_token& stop) {
  return Open(options, FindServersOfTicket(options), session, stop);
}

StoreStatus NetworkSession::Open(const NetworkOptions& options, ServerFinder find,
                                 std::unique_ptr<NetworkSession>& session,
                                 const std::stop_token& stop) {
  session.reset();
  if (!options.server.empty() && !ParseServerName(options.server)) {
    return {kLdapParamError, "'" + options.server + "' is no name of a server"};
  }
  if (!options.site.empty() && !IsSiteName(options.site)) {
    return {kLdapParamError, "'" + options.site + "' is no name of a site"};
  }
  auto servers = std::make_shared<ServerChoice>(options, std::move(find));
  const auto schemas = std::make_shared<SchemaCache>();
  const auto controllers = std::make_shared<DomainControllers>(options, schemas);
  const auto around = std::make_shared<DomainsAround>();
  StoreOpener opener = MakeOpener(servers, schemas, controllers, around);
  std::unique_ptr<IDirectoryStore> store;
  StoreStatus status = opener(store, stop);
  if (!status.Ok()) return status;
  const ServerName home = servers->current().value_or(ServerName());
  PlaceFinder find_places = FindSearchPlaces(opener, controllers, around);
  session.reset(new NetworkSession(
      std::make_unique<Parts>(std::move(store), std::move(opener), std::move(find_places),
                              std::move(servers), home, MakeServerOpener(options, schemas))));
  return {};
}

IDirectoryStore& NetworkSession::store() { return *parts_->store; }

NetworkDirectoryService& NetworkSession::service() { return parts_->service; }

StoreOpener NetworkSession::open_another() const { return parts_->open_another; }

PlaceFinder NetworkSession::find_places() const { return parts_->find_places; }

std::string NetworkSession::server() const {
  return parts_->servers->current().value_or(ServerName()).Text();
}

ChosenServer NetworkSession::chosen() const {
  return parts_->servers->chosen().value_or(ChosenServer());
}

}  // namespace pelora::ldap
