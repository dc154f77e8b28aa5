// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "hosts/ldap/network/server_name.h"

namespace pelora::ldap {

/// The server that a referral sends to: the first of its addresses (`ldap://host:port/...`) that
/// names one. Nothing else of an address counts, and none that asks for another protocol.
[[nodiscard]] std::optional<ServerName> ServerOfReferral(const std::vector<std::string>& addresses);

}  // namespace pelora::ldap
