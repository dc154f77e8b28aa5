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

ServerChoice::ServerChoice(const NetworkOptions& options)
    : options_(options), named_(ParseServerName(options.server)) {}

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
  KerberosTicket ticket;
  StoreStatus status = ReadKerberosTicket(ticket);
  std::vector<ServerName> servers;
  if (status.Ok()) status = FindDomainServers(ticket.Realm(), options_.connect_timeout, servers);
  if (!status.Ok()) return status;
  for (const ServerName& server : servers) {
    if (server == unreachable && servers.size() > 1) continue;
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
