// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <set>
#include <utility>

#include "hosts/changes/change_work.h"
#include "hosts/changes/whole_list.h"
#include "hosts/ldap/name_key.h"

namespace pelora::changes {

KnownWork::KnownWork(ldap::IDirectoryStore& store, std::span<const Change> changes, Lists lists)
    : store_(store), changes_(changes) {
  if (lists != Lists::kUntouched || std::ranges::none_of(changes, &HasWholeList)) return;
  std::set<std::string> met;
  for (std::size_t at = 0; at < changes.size(); ++at) {
    // What comes and goes, and other names, may concern every object behind them.
    if (changes[at].kind != Change::Kind::kModify) return;
    const bool is_first = met.insert(ldap::NameKey(changes[at].dn)).second;
    if (is_first && HasWholeList(changes[at])) readable_.push_back(at);
  }
}

ldap::StoreStatus KnownWork::Read(std::size_t begin, std::size_t end) {
  read_.clear();
  const auto first = std::ranges::lower_bound(readable_, begin);
  const std::vector<std::size_t> places(first, std::ranges::lower_bound(readable_, end));
  if (places.empty()) return {};
  std::vector<std::string> dns;
  std::set<std::string> names;
  for (const std::size_t at : places) {
    dns.push_back(changes_[at].dn);
    for (const ValueChange& value : changes_[at].attributes) names.insert(value.attribute);
  }
  std::size_t next = 0;
  static_cast<void>(store_.ReadMany(dns, std::vector<std::string>(names.begin(), names.end()),
                                    [&](const ldap::StoreStatus& read, ldap::Entry entry) {
                                      const std::size_t at = places[next++];
                                      if (read.Ok()) read_.insert_or_assign(at, std::move(entry));
                                      return true;
                                    }));
  return {};
}

const ldap::Entry* KnownWork::LookedAt(std::size_t at) const {
  const auto found = read_.find(at);
  return found == read_.end() ? nullptr : &found->second;
}

}  // namespace pelora::changes
