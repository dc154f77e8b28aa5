// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/server_choice.h"

#include <utility>
#include <vector>

#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/network/domain_servers.h"
#include "hosts/ldap/network/kerberos_ticket.h"

namespace pelora::ldap {
namespace {

/// Whether another server might do better.
bool IsUnreachable(const StoreStatus& status) {
  return status.code == kLdapServerDown || status.code == kLdapTimeout ||
         status.code == kLdapConnectError;
}

}  // namespace

ServerFinder FindServersOfTicket(const NetworkOptions& options) {
  return [timeout = options.connect_timeout](std::vector<ServerName>& servers) {
    KerberosTicket ticket;
    StoreStatus status = ReadKerberosTicket(ticket);
    return status.Ok() ? FindDomainServers(ticket.Realm(), timeout, servers) : status;
  };
}

ServerChoice::ServerChoice(const NetworkOptions& options, ServerFinder find)
    : options_(options), find_(std::move(find)), named_(ParseServerName(options.server)) {}

std::optional<ServerName> ServerChoice::current() const {
  if (named_) return named_;
  const std::lock_guard lock(mutex_);
  return found_;
}

StoreStatus ServerChoice::Connect(const std::stop_token& stop,
                                  std::shared_ptr<LdapConnection>& connection) {
  connection.reset();
  const std::optional<ServerName> chosen = current();
  if (!chosen) return FindOther({}, stop, connection);
  StoreStatus status = LdapConnection::Open(*chosen, options_, stop, connection);
  if (named_ || !IsUnreachable(status)) return status;
  StoreStatus other = FindOther(chosen, stop, connection);
  // Where none can be reached, that the name servers are gone too says nothing of the reason.
  return IsUnreachable(other) ? status : other;
}

StoreStatus ServerChoice::FindOther(const std::optional<ServerName>& unreachable,
                                    const std::stop_token& stop,
                                    std::shared_ptr<LdapConnection>& connection) {
  std::vector<ServerName> servers;
  StoreStatus status = find_(servers);
  if (!status.Ok()) return status;
  status = {kLdapServerDown, "the domain has no other server"};
  for (const ServerName& server : servers) {
    // Records of different weight may name one server several times.
    if (server == unreachable) continue;
    status = LdapConnection::Open(server, options_, stop, connection);
    if (IsUnreachable(status)) continue;
    if (!status.Ok()) return status;
    const std::lock_guard lock(mutex_);
    found_ = server;
    return {};
  }
  return status;
}

}  // namespace pelora::ldap
