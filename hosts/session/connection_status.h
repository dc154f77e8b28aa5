// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <ctime>
#include <optional>
#include <string>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/network/server_choice.h"
#include "hosts/session/directory_session.h"
#include "hosts/session/json_text.h"

namespace pelora::session {

/// With which directory a program works, and how.
struct ConnectionStatus {
  /// The directory file; empty with a server, of which alone the rest speaks.
  std::string file{};
  /// The server that is in use now, and how it was chosen.
  ldap::ChosenServer server{};
  /// Where the server lies, as it says over the sealed connection; empty when it does not.
  std::string site{};
  bool is_read_only = false;
  /// As whom: `name@REALM`; empty without a ticket, of which `ticket_trouble` tells then.
  std::string user{};
  /// The end of the ticket; none for one that does not end.
  std::optional<std::time_t> ticket_end{};
  std::string ticket_trouble{};
  /// By how many seconds the server's clock is ahead of this machine's; none when it does not say.
  std::optional<std::int64_t> seconds_ahead{};
};

/// Asks a store of the session's what its server says of itself. Whatever can be known without the
/// server is there on failure too.
[[nodiscard]] ldap::StoreStatus ReadConnectionStatus(const DirectorySession& session,
                                                     ldap::IDirectoryStore& store,
                                                     ConnectionStatus& status);

/// The part of it that the server says of itself. `now` is this machine's time.
[[nodiscard]] ldap::StoreStatus ReadServerStatus(ldap::IDirectoryStore& store, std::time_t (*now)(),
                                                 ConnectionStatus& status);

/// Why it is this server, in words that go on behind "chosen:".
[[nodiscard]] std::string WhyChosen(const ldap::ChosenServer& server);

/// One thing that is told of a connection to a person.
struct ConnectionRow {
  std::string label;
  std::string text;
};

/// All of it for a person; `now` is this machine's time.
[[nodiscard]] std::vector<ConnectionRow> ConnectionRows(const ConnectionStatus& status,
                                                        std::time_t now);

/// All of it for a program; what is not known is null.
[[nodiscard]] Json ConnectionJson(const ConnectionStatus& status);

}  // namespace pelora::session
