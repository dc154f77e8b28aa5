// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/network_session.h"

#include <utility>

#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/network/network_store.h"
#include "hosts/ldap/network/schema_cache.h"

namespace pelora::ldap {
namespace {

StoreOpener MakeOpener(std::shared_ptr<ServerChoice> servers,
                       std::shared_ptr<SchemaCache> schemas) {
  return [servers = std::move(servers), schemas = std::move(schemas)](
             std::unique_ptr<IDirectoryStore>& store, const std::stop_token& stop) {
    store.reset();
    auto opened = std::make_unique<NetworkStore>(servers, schemas);
    opened->StopOn(stop);
    StoreStatus status = opened->Open();
    if (status.Ok()) store = std::move(opened);
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
    return MakeOpener(std::make_shared<ServerChoice>(to_server), schemas)(store, {});
  };
}

}  // namespace

struct NetworkSession::Parts {
  Parts(std::unique_ptr<IDirectoryStore> opened, StoreOpener opener,
        std::shared_ptr<ServerChoice> choice, const ServerName& home, ServerStoreOpener open_server)
      : store(std::move(opened)),
        open_another(std::move(opener)),
        servers(std::move(choice)),
        service(home, *store, std::move(open_server)) {}

  std::unique_ptr<IDirectoryStore> store;
  StoreOpener open_another;
  std::shared_ptr<ServerChoice> servers;
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
  StoreOpener opener = MakeOpener(servers, schemas);
  std::unique_ptr<IDirectoryStore> store;
  StoreStatus status = opener(store, stop);
  if (!status.Ok()) return status;
  const ServerName home = servers->current().value_or(ServerName());
  session.reset(new NetworkSession(std::make_unique<Parts>(std::move(store), std::move(opener),
                                                           std::move(servers), home,
                                                           MakeServerOpener(options, schemas))));
  return {};
}

IDirectoryStore& NetworkSession::store() { return *parts_->store; }

NetworkDirectoryService& NetworkSession::service() { return parts_->service; }

StoreOpener NetworkSession::open_another() const { return parts_->open_another; }

std::string NetworkSession::server() const {
  return parts_->servers->current().value_or(ServerName()).Text();
}

ChosenServer NetworkSession::chosen() const {
  return parts_->servers->chosen().value_or(ChosenServer());
}

}  // namespace pelora::ldap
