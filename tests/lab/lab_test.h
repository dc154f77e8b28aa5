// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "hosts/ldap/network/network_session.h"
#include "tests/lab/lab.h"
#include "tests/lab/lab_administrator.h"
#include "tests/lab/tcp_relay.h"

namespace pelora::lab {

using ldap::Entry;
using ldap::NetworkOptions;
using ldap::NetworkSession;
using ldap::StoreStatus;

/// Short enough for a test to wait for. A machine that does other things too may need longer for an
/// answer: only what is to get none waits for so long, and what else is asked then is asked again.
inline constexpr std::chrono::milliseconds kShortWait{700};
inline constexpr int kTries = 50;

/// Opens a session that has to open.
[[nodiscard]] inline std::unique_ptr<NetworkSession> OpenSession(const NetworkOptions& options) {
  std::unique_ptr<NetworkSession> session;
  const StoreStatus status = NetworkSession::Open(options, session);
  if (!status.Ok()) throw std::runtime_error(status.text);
  return session;
}
[[nodiscard]] inline std::unique_ptr<NetworkSession> OpenSession() {
  return OpenSession({.server = Server()});
}
/// One that waits for answers no longer than that.
[[nodiscard]] inline std::unique_ptr<NetworkSession> OpenImpatientSession(
    const std::string& server, std::chrono::milliseconds wait = kShortWait) {
  const NetworkOptions options{.server = server, .request_timeout = wait};
  std::unique_ptr<NetworkSession> session;
  for (int tries = 1; tries < kTries; ++tries) {
    if (NetworkSession::Open(options, session).Ok()) return session;
  }
  return OpenSession(options);
}

/// What became of a request, as one line: "0", or the code and the text.
[[nodiscard]] inline std::string ToText(const StoreStatus& status) {
  return status.Ok() ? "0" : std::to_string(status.code) + " " + status.text;
}

/// The first value of an attribute, as a store reads it anew; or why there is none.
[[nodiscard]] inline std::string ReadValue(ldap::IDirectoryStore& store, const std::string& dn,
                                           const std::string& attribute) {
  Entry entry;
  const std::vector<std::string> attributes = {attribute};
  const StoreStatus status = store.Read(dn, attributes, entry);
  if (!status.Ok()) return ToText(status);
  const auto found = entry.attributes.find(attribute);
  return found == entry.attributes.end() ? "none" : found->second.front();
}

/// The same of an impatient session: what it reads in the end.
[[nodiscard]] inline std::string ReadValueAtLast(ldap::IDirectoryStore& store,
                                                 const std::string& dn,
                                                 const std::string& attribute) {
  std::string value = ReadValue(store, dn, attribute);
  for (int tries = 1; tries < kTries && value.starts_with("-"); ++tries) {
    value = ReadValue(store, dn, attribute);
  }
  return value;
}

[[nodiscard]] inline StoreStatus Replace(ldap::IDirectoryStore& store, const std::string& dn,
                                         const std::string& attribute,
                                         const std::vector<std::string>& values) {
  const std::vector<ldap::Modification> changes = {
      {ldap::Modification::Operation::kReplace, attribute, values}};
  return store.Modify(dn, changes);
}

/// A session that reaches the domain controller through a relay.
struct RelayedSession {
  RelayedSession() : session(OpenSession({.server = Address()})) {}
  /// One that waits for answers no longer than that.
  explicit RelayedSession(std::chrono::milliseconds wait)
      : session(OpenImpatientSession(Address(), wait)) {}

  [[nodiscard]] std::string Address() const {
    return Server() + ":" + std::to_string(relay.port());
  }

  [[nodiscard]] ldap::IDirectoryStore& store() const { return session->store(); }

  TcpRelay relay{ldap::kDirectoryPort};
  std::unique_ptr<NetworkSession> session;
};

}  // namespace pelora::lab
