// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/first_entries.h"

#include <chrono>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

namespace pelora::ldap {
namespace {

/// So many entries of a search are handed over before the others are looked for, unless they were
/// so long in coming that to begin anew would cost more than it is worth.
constexpr std::size_t kFirstEntries = 200;
constexpr std::chrono::milliseconds kSoon{50};

}  // namespace

StoreStatus HandOverFirstEntriesEarly(const SearchOnce& search, const EntrySink& sink) {
  std::vector<Entry> first;
  bool is_whole = true;
  const auto begin = std::chrono::steady_clock::now();
  StoreStatus status = search([&](Entry entry) {
    first.push_back(std::move(entry));
    const bool is_early = std::chrono::steady_clock::now() - begin < kSoon;
    is_whole = first.size() < kFirstEntries || !is_early;
    return is_whole;
  });
  if (!status.Ok()) return status;
  std::unordered_set<std::string> given;
  for (Entry& entry : first) {
    if (!is_whole) given.insert(entry.dn);
    if (!sink(std::move(entry))) return {};
  }
  if (is_whole) return {};
  std::vector<Entry> rest;
  status = search([&](Entry entry) {
    if (!given.contains(entry.dn)) rest.push_back(std::move(entry));
    return true;
  });
  for (Entry& entry : rest) {
    if (!status.Ok() || !sink(std::move(entry))) break;
  }
  return status;
}

}  // namespace pelora::ldap
