// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/server_choice.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/network/domain_servers.h"
#include "hosts/ldap/network/kerberos_ticket.h"

namespace pelora::ldap {
namespace {

/// Whether another server might do better.
bool IsUnreachable(const StoreStatus& status) {
  constexpr auto kCodes = std::to_array<int>(
      {kLdapServerDown, kLdapTimeout, kLdapConnectError, kLdapBusy, kLdapUnavailable});
  return std::ranges::find(kCodes, status.code) != kCodes.end();
}

std::optional<ChosenServer> Named(const NetworkOptions& options) {
  std::optional<ServerName> name = ParseServerName(options.server);
  if (!name) return std::nullopt;
  return ChosenServer{.name = *std::move(name), .is_named = true};
}

/// How a server is signed in to for which there are others: it need not be waited for long.
NetworkOptions WithoutPatience(NetworkOptions options) {
  if (!options.sign_in_timeout) {
    options.sign_in_timeout = std::min(options.request_timeout, options.connect_timeout);
  }
  return options;
}

}  // namespace

ServerFinder FindServersOfTicket(const NetworkOptions& options) {
  return [options](const std::stop_token& stop, DomainServers& found) {
    KerberosTicket ticket;
    StoreStatus status = ReadKerberosTicket(ticket);
    return status.Ok() ? FindServersOfRealm(options, ticket.Realm())(stop, found) : status;
  };
}

ServerFinder FindServersOfRealm(const NetworkOptions& options, const std::string& realm) {
  return [options, realm](const std::stop_token& stop, DomainServers& found) {
    const DomainQuestions ask{
        .look_up =
            [&](const std::string& site, std::vector<ServerName>& servers) {
              return FindDomainServers(realm, site, options.connect_timeout, servers);
            },
        .ping =
            [&](std::span<const ServerName> servers, const IsGoodAnswer& is_good) {
              return PingServers(servers, DomainOfRealm(realm), options.ping_timeout, stop,
                                 is_good);
            }};
    return FindNearestServers(ask, options.site, found);
  };
}

ServerChoice::ServerChoice(const NetworkOptions& options, ServerFinder find)
    : options_(options),
      hurried_(WithoutPatience(options)),
      find_(std::move(find)),
      is_named_(ParseServerName(options.server).has_value()),
      chosen_(Named(options)) {}

std::optional<ChosenServer> ServerChoice::chosen() const {
  const std::lock_guard lock(mutex_);
  return chosen_;
}

std::optional<ServerName> ServerChoice::current() const {
  const std::lock_guard lock(mutex_);
  return chosen_ ? std::optional(chosen_->name) : std::nullopt;
}

void ServerChoice::NoteSealing(const LdapConnection& connection) {
  const std::lock_guard lock(mutex_);
  if (chosen_ && chosen_->name == connection.server()) {
    chosen_->sealed_bits = connection.sealed_bits();
  }
}

StoreStatus ServerChoice::Connect(const std::stop_token& stop,
                                  std::shared_ptr<LdapConnection>& connection) {
  connection.reset();
  const std::optional<ChosenServer> known = this->chosen();
  if (!known) return FindOther({}, stop, connection);
  const ServerName& chosen = known->name;
  const bool has_others = !known->is_named && !known->is_only;
  StoreStatus status =
      LdapConnection::Open(chosen, has_others ? hurried_ : options_, stop, connection);
  if (status.Ok()) NoteSealing(*connection);
  if (is_named_ || !IsUnreachable(status)) return status;
  StoreStatus other = FindOther(chosen, stop, connection);
  // Where none can be reached, that the name servers are gone too says nothing of the reason.
  return IsUnreachable(other) ? status : other;
}

StoreStatus ServerChoice::ConnectElsewhere(const ServerName& left, const std::stop_token& stop,
                                           std::shared_ptr<LdapConnection>& connection) {
  connection.reset();
  if (is_named_) return {kLdapServerDown, "no other server was named"};
  return FindOther(left, stop, connection);
}

StoreStatus ServerChoice::ConnectForWriting(const ServerName& name, const ServerName& home,
                                            const std::string& realm, const std::stop_token& stop,
                                            std::shared_ptr<LdapConnection>& connection) {
  connection.reset();
  NetworkOptions of_same_realm = options_;
  of_same_realm.realm = realm;
  std::shared_ptr<LdapConnection> opened;
  StoreStatus status = realm.empty()
                           ? StoreStatus{kLdapReferral, "it does not say of which realm they are"}
                           : LdapConnection::Open(name, of_same_realm, stop, opened);
  if (!status.Ok()) {
    if (status.code == kLdapTimeout) status.code = kLdapServerDown;
    status.text = "the server '" + home.Text() + "' takes no changes and names '" + name.Text() +
                  "' for them: " + status.text;
    return status;
  }
  connection = std::move(opened);
  const std::lock_guard lock(mutex_);
  if (chosen_ && chosen_->name == home) chosen_->writer = name;
  return {};
}

StoreStatus ServerChoice::FindOther(const std::optional<ServerName>& unreachable,
                                    const std::stop_token& stop,
                                    std::shared_ptr<LdapConnection>& connection) {
  DomainServers found;
  StoreStatus status = find_(stop, found);
  if (!status.Ok()) return status;
  StoreStatus failure = {kLdapServerDown, "the domain has no other server"};
  const bool is_only =
      std::ranges::all_of(found.servers, [&first = found.servers](const DomainServer& server) {
        return server.name == first.front().name;
      });
  for (DomainServer& server : found.servers) {
    // Records of different weight may name one server several times.
    if (server.name == unreachable) continue;
    status = LdapConnection::Open(server.name, is_only ? options_ : hurried_, stop, connection);
    if (status.code == kLdapUserCancelled) return status;
    if (!status.Ok()) {
      // One that says why it is of no use says more than one that is not there.
      if (failure.code == kLdapServerDown) failure = std::move(status);
      continue;
    }
    const std::lock_guard lock(mutex_);
    chosen_ = ChosenServer{.name = std::move(server.name),
                           .wanted_site = std::move(found.site),
                           .told = std::move(server.told),
                           .is_near = server.is_near,
                           .is_only = is_only,
                           .sealed_bits = connection->sealed_bits()};
    return {};
  }
  return failure;
}

}  // namespace pelora::ldap
