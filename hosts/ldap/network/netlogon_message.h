// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "hosts/ldap/network/netlogon_answer.h"

namespace pelora::ldap {

/// The datagram that asks a domain controller what it is, as the domain's own machines ask: a
/// search of the root entry for the attribute `Netlogon`, under the number `id`. A server of
/// another domain than `domain` does not answer it.
[[nodiscard]] std::string NetlogonRequest(int id, const std::string& domain);

/// What the answer to the request `id` says; nothing when the datagram is no such answer.
[[nodiscard]] std::optional<NetlogonAnswer> ReadNetlogonMessage(int id, std::string_view datagram);

}  // namespace pelora::ldap
