// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace pelora::ldap {

/// One service record of the domain name system: where a service is offered.
struct ServiceRecord {
  std::uint16_t priority = 0;
  std::uint16_t weight = 0;
  std::uint16_t port = 0;
  std::string host;

  friend bool operator==(const ServiceRecord&, const ServiceRecord&) = default;
};

/// The service records of an answer, as its bytes came from the name server. Records of other types
/// and those that say "not here" (the root as host) are left out; what cannot be read ends the
/// list.
[[nodiscard]] std::vector<ServiceRecord> ReadServiceRecords(std::span<const unsigned char> answer);

/// A number from 0 up to and with its argument.
using RandomNumber = std::function<std::uint32_t(std::uint32_t most)>;

/// Puts records in the order in which they are to be tried: by priority, lowest first; within one,
/// by a draw in which the weight is the number of lots.
void OrderServiceRecords(std::vector<ServiceRecord>& records, const RandomNumber& draw);

}  // namespace pelora::ldap
