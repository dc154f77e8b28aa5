// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "hosts/ldap/network/network_store.h"
#include "hosts/ldap/network/server_choice.h"
#include "tests/lab/lab_test.h"

namespace pelora::lab {

/// The controllers of the lab's domain when it has three (tests/lab/make_controllers.sh): `dc1` in
/// the first site, and in the one where this machine is a writable and a read-only one.
inline constexpr const char* kNear = "dc2";
inline constexpr const char* kReadOnly = "rodc";
inline constexpr const char* kNearSite = "Branch";
inline constexpr const char* kFarSite = "Default-First-Site-Name";
/// Where the near one listens.
inline constexpr const char* kNearAddress = "10.77.0.2";

[[nodiscard]] inline std::string HostOf(const std::string& controller) {
  return controller + ".pelora.test";
}

/// Has a controller fetch from another one what was changed there.
inline void Replicate(const std::string& to, const std::string& from) {
  const std::string settings = Home() + "/domain/etc/smb.conf";
  const std::string command = "samba-tool drs replicate " + HostOf(to) + " " + HostOf(from) + " '" +
                              Base() + "' --use-krb5-ccache='" + TicketsOf(kAdministrator) +
                              "' --configfile='" + settings + "' 2>&1";
  // A connection that it has kept to one that was killed since fails once.
  for (int tries = 1; tries < kTries; ++tries) {
    try {
      return static_cast<void>(OutputOf(command));
    } catch (const std::runtime_error&) {
    }
  }
  static_cast<void>(OutputOf(command));
}

/// A store on a domain whose servers are told here, the first one first.
struct ToldStore {
  explicit ToldStore(const std::vector<std::string>& addresses)
      : choice(std::make_shared<ldap::ServerChoice>(
            NetworkOptions{},
            [addresses](const std::stop_token&, ldap::DomainServers& found) {
              for (const std::string& address : addresses) {
                found.servers.push_back({.name = *ldap::ParseServerName(address)});
              }
              return StoreStatus{};
            })),
        store(choice, std::make_shared<ldap::SchemaCache>()) {}

  [[nodiscard]] std::string server() const { return choice->current()->Text(); }

  std::shared_ptr<ldap::ServerChoice> choice;
  ldap::NetworkStore store;
};

/// All three are there, and know the same of a user of each test's own.
class SeveralControllers : public ::testing::Test {
 protected:
  SeveralControllers() {
    static int number = 0;
    user_ = "CN=Person " + std::to_string(++number) + ",OU=Many," + Base();
    LabAdministrator().Set(user_, "description", {"before"});
    Spread();
  }

  /// What was written to the first is known to all.
  static void Spread() {
    Replicate(kNear, kFirstController);
    Replicate(kReadOnly, kFirstController);
  }
  /// What a controller has.
  [[nodiscard]] std::string DescriptionOn(const std::string& controller) const {
    const auto session = OpenSession({.server = HostOf(controller)});
    return ReadValue(session->store(), user_, "description");
  }

  std::string user_;
};

}  // namespace pelora::lab
