// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <stop_token>

#include "hosts/ldap/network/ldap_api.h"

namespace pelora::ldap {

/// Waits for the answer to the request `id`, as much of it as `amount` (`LDAP_MSG_ONE` or
/// `LDAP_MSG_ALL`) says, for as long as `timeout`, or until `stop` says that it is enough.
///
/// The library's code is returned: 0 and `message`; or -5, -8 when it was stopped, and what else
/// ended the wait, with `message` left empty.
[[nodiscard]] int AwaitMessage(LDAP* handle, int id, int amount, std::chrono::milliseconds timeout,
                               const std::stop_token& stop, LdapMessagePtr& message);

}  // namespace pelora::ldap
