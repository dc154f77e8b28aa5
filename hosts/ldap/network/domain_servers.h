// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/network/server_name.h"

namespace pelora::ldap {

/// The domain name of a realm, and the realm of a domain: its name in capitals.
[[nodiscard]] std::string DomainOfRealm(const std::string& realm);
[[nodiscard]] std::string RealmOfDomain(const std::string& domain);

/// Asks the domain name system for the directory servers of the domain `realm`, or for those of its
/// site `site` unless that is empty, in the order in which they are to be tried, each of them once.
/// Each name server is waited for as long as `timeout`, once.
///
/// No answer, and an answer that names none, is -1 with a text that says what was asked for;
/// `servers` is empty then.
[[nodiscard]] StoreStatus FindDomainServers(const std::string& realm, const std::string& site,
                                            std::chrono::milliseconds timeout,
                                            std::vector<ServerName>& servers);

/// The same for the servers of a forest's global catalog; `forest` is the name of its first domain.
[[nodiscard]] StoreStatus FindCatalogServers(const std::string& forest,
                                             std::chrono::milliseconds timeout,
                                             std::vector<ServerName>& servers);

}  // namespace pelora::ldap
