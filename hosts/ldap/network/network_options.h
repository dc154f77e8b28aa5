// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

namespace pelora::ldap {

/// How much of one search or one object is taken from a server that finds no end. What a directory
/// holds in earnest stays far below.
struct AnswerLimits {
  /// Pages of a search, parts of an attribute that is given in parts.
  std::size_t most_parts{10'000};
  /// Names and values together.
  std::size_t most_bytes{512UL * 1024 * 1024};
  /// One message.
  std::size_t most_message_bytes{64UL * 1024 * 1024};
};

/// How a directory on the network is reached.
struct NetworkOptions {
  /// `host` or `host:port`. Empty: a server of the domain that the user's Kerberos ticket is for,
  /// as the domain name system names them.
  std::string server{};
  /// The site whose servers come first when one is found. Empty: the one that this machine is in,
  /// as the domain's servers see it.
  std::string site{};
  /// How long to wait for a connection to be made, and for an answer from the domain name system.
  std::chrono::milliseconds connect_timeout{5'000};
  /// How long to wait, at most, for the domain's servers to say what they are when one is found.
  /// Those that do not are tried after the others.
  std::chrono::milliseconds ping_timeout{500};
  /// How long to wait for each answer, and between the parts of a long one.
  std::chrono::milliseconds request_timeout{30'000};
  /// How long to wait for each answer while signing in; none: as long as for any other. A server
  /// that was found beside others is waited for as long as for a connection.
  std::optional<std::chrono::milliseconds> sign_in_timeout{};
  AnswerLimits limits{};
  /// The realm of which a server has to prove to be; empty: whichever knows it.
  std::string realm{};
  /// A global catalog is wanted: nothing is written there, and what is missing is not taken for
  /// unset.
  bool is_catalog = false;
};

}  // namespace pelora::ldap
