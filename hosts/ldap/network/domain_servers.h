// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/network/server_name.h"

namespace pelora::ldap {

/// The domain name of a realm.
[[nodiscard]] std::string DomainOfRealm(const std::string& realm);

/// Asks the domain name system for the directory servers of the domain `realm`, or for those of its
/// site `site` unless that is empty, in the order in which they are to be tried, each of them once.
/// Each name server is waited for as long as `timeout`, once.
///
/// No answer, and an answer that names none, is -1 with a text that says what was asked for;
/// `servers` is empty then.
[[nodiscard]] StoreStatus FindDomainServers(const std::string& realm, const std::string& site,
                                            std::chrono::milliseconds timeout,
                                            std::vector<ServerName>& servers);

}  // namespace pelora::ldap
