// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/service_records.h"

#include <arpa/nameser.h>
#include <resolv.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

namespace pelora::ldap {
namespace {

/// Priority, weight and port stand before the host.
constexpr int kHostOffset = 3 * NS_INT16SZ;

bool ReadRecord(const ns_msg& message, const ns_rr& entry, ServiceRecord& record) {
  if (ns_rr_rdlen(entry) <= kHostOffset) return false;
  const unsigned char* const data = ns_rr_rdata(entry);
  std::array<char, NS_MAXDNAME> host{};
  const int length = dn_expand(ns_msg_base(message), ns_msg_end(message), data + kHostOffset,
                               host.data(), static_cast<int>(host.size()));
  if (length < 0 || kHostOffset + length > ns_rr_rdlen(entry)) return false;
  record = {.priority = static_cast<std::uint16_t>(ns_get16(data)),
            .weight = static_cast<std::uint16_t>(ns_get16(data + NS_INT16SZ)),
            .port = static_cast<std::uint16_t>(ns_get16(data + 2 * NS_INT16SZ)),
            .host = host.data()};
  return true;
}

}  // namespace

std::vector<ServiceRecord> ReadServiceRecords(std::span<const unsigned char> answer) {
  std::vector<ServiceRecord> records;
  ns_msg message{};
  if (ns_initparse(answer.data(), static_cast<int>(answer.size()), &message) != 0) return records;
  for (int at = 0; at < ns_msg_count(message, ns_s_an); ++at) {
    ns_rr entry{};
    if (ns_parserr(&message, ns_s_an, at, &entry) != 0) break;
    if (ns_rr_type(entry) != ns_t_srv || ns_rr_class(entry) != ns_c_in) continue;
    ServiceRecord record;
    if (!ReadRecord(message, entry, record)) break;
    if (!record.host.empty() && record.host != "." && record.port != 0) {
      records.push_back(std::move(record));
    }
  }
  return records;
}

void OrderServiceRecords(std::vector<ServiceRecord>& records, const RandomNumber& draw) {
  // Those without a lot of their own stand first, so that the lot 0 may fall on them.
  std::ranges::stable_sort(records, {}, [](const ServiceRecord& record) {
    return std::pair(record.priority, record.weight != 0);
  });
  for (auto first = records.begin(); first != records.end(); ++first) {
    const auto same_priority = [&](const ServiceRecord& record) {
      return record.priority == first->priority;
    };
    const auto last = std::find_if_not(first, records.end(), same_priority);
    const auto lots =
        std::accumulate(first, last, std::uint32_t{0},
                        [](std::uint32_t sum, const ServiceRecord& r) { return sum + r.weight; });
    const std::uint32_t lot = draw(lots);
    std::uint32_t sum = 0;
    const auto drawn = std::find_if(
        first, last, [&](const ServiceRecord& record) { return (sum += record.weight) >= lot; });
    std::rotate(first, drawn, std::next(drawn));
  }
}

}  // namespace pelora::ldap
