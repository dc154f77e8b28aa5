// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/first_entries.h"

#include <chrono>
#include <string>
#include <unordered_set>
#include <utility>

#include "hosts/ldap/packed_entries.h"

namespace pelora::ldap {
namespace {

/// So many entries of a search are handed over before the others are looked for, unless they were
/// so long in coming that to begin anew would cost more than it is worth.
constexpr std::size_t kFirstEntries = 200;
constexpr std::chrono::milliseconds kSoon{50};

}  // namespace

StoreStatus HandOverFirstEntriesEarly(const SearchOnce& search, const EntrySink& sink) {
  PackedEntries found;
  bool is_whole = true;
  const auto begin = std::chrono::steady_clock::now();
  StoreStatus status = search([&](const Entry& entry) {
    found.Add(entry);
    const bool is_early = std::chrono::steady_clock::now() - begin < kSoon;
    is_whole = found.Count() < kFirstEntries || !is_early;
    return is_whole;
  });
  if (!status.Ok()) return status;
  std::unordered_set<std::string> given;
  const bool is_wanted = found.HandOver([&](Entry entry) {
    if (!is_whole) given.insert(entry.dn);
    return sink(std::move(entry));
  });
  if (is_whole || !is_wanted) return {};
  status = search([&](const Entry& entry) {
    if (!given.contains(entry.dn)) found.Add(entry);
    return true;
  });
  if (status.Ok()) found.HandOver(sink);
  return status;
}

}  // namespace pelora::ldap
