// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <string>

namespace pelora::ldap {

/// How a directory on the network is reached.
struct NetworkOptions {
  /// `host` or `host:port`. Empty: a server of the domain that the user's Kerberos ticket is for,
  /// as the domain name system names them.
  std::string server{};
  /// How long to wait for a connection to be made, and for an answer from the domain name system.
  std::chrono::milliseconds connect_timeout{5'000};
  /// How long to wait for each answer, and between the parts of a long one.
  std::chrono::milliseconds request_timeout{30'000};
};

}  // namespace pelora::ldap
