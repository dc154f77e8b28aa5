// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <vector>

#include "hosts/ldap/network/netlogon_answer.h"
#include "hosts/ldap/network/server_name.h"

namespace pelora::ldap {

/// What each of some servers says of itself, in their order; nothing for one that has not answered.
using ServerAnswers = std::vector<std::optional<NetlogonAnswer>>;

/// Whether an answer is good enough not to wait for the others.
using IsGoodAnswer = std::function<bool(const NetlogonAnswer& answer)>;

/// Asks servers of the domain `domain` what they are, all at once, by a datagram each, which is
/// repeated as it may get lost. Waits until all have answered, until an answer is good, until
/// `timeout` is over or `stop` says that it is enough. Looking up the addresses takes as long as
/// the machine's resolver does.
///
/// A server that cannot be asked, and one that answers for another domain, has not answered.
[[nodiscard]] ServerAnswers PingServers(std::span<const ServerName> servers,
                                        const std::string& domain,
                                        std::chrono::milliseconds timeout,
                                        const std::stop_token& stop, const IsGoodAnswer& is_good);

}  // namespace pelora::ldap
