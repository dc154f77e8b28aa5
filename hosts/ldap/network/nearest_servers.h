// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/network/netlogon_answer.h"
#include "hosts/ldap/network/server_name.h"
#include "hosts/ldap/network/server_ping.h"

namespace pelora::ldap {

/// A server of a domain that may be tried.
struct DomainServer {
  ServerName name;
  /// What it has said of itself, if anything.
  std::optional<NetlogonAnswer> told{};
  /// It is in the site that is wanted, or serves it.
  bool is_near = false;
};

/// The servers of a domain, in the order in which they are to be tried.
struct DomainServers {
  /// The site whose servers come first; empty when nobody has said which one that is.
  std::string site{};
  std::vector<DomainServer> servers{};
};

/// Where one learns of a domain's servers.
struct DomainQuestions {
  /// Those of a site, or without one of the whole domain, as the domain name system has them.
  std::function<StoreStatus(const std::string& site, std::vector<ServerName>& servers)> look_up;
  /// Asks servers what they are, as `PingServers` does.
  std::function<ServerAnswers(std::span<const ServerName> servers, const IsGoodAnswer& is_good)>
      ping;
};

/// Finds the servers of a domain, the nearest first. `site` is the site that is wanted; when it is
/// empty, the one that the first server to answer takes this machine to be in.
///
/// The order is: writable servers of the site, other writable ones, read-only ones of the site,
/// other read-only ones; then those that have not answered, the site's before the others. Among
/// equals it is that of the domain name system. When none answers, that is the order.
///
/// What is written cannot be read back at once from a read-only server: they come last, though they
/// may be nearer.
///
/// A failure (-1) is that of the domain name system; a site that is wanted and that it does not
/// know is one too.
[[nodiscard]] StoreStatus FindNearestServers(const DomainQuestions& ask, const std::string& site,
                                             DomainServers& found);

}  // namespace pelora::ldap
