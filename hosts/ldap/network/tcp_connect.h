// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <stop_token>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/file_descriptor.h"
#include "hosts/ldap/network/server_name.h"

namespace pelora::ldap {

/// Connects to a server, on the first of its addresses that takes the connection; each is waited
/// for as long as `timeout`, and all of them until `stop` says that it is enough. Looking up the
/// addresses takes as long as the machine's resolver does.
///
/// The socket does not block. On failure (-1; -8 when it was stopped) it is none, and the text is
/// the reason: the name is not known, the last address refuses or took no connection in that time.
[[nodiscard]] StoreStatus ConnectByTcp(const ServerName& server, std::chrono::milliseconds timeout,
                                       const std::stop_token& stop, FileDescriptor& socket);

}  // namespace pelora::ldap
