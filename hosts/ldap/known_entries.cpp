// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/known_entries.h"

#include <algorithm>

#include "directory/ascii_case.h"

namespace pelora::ldap {

void KnownEntries::SetState(State state) {
  if (state != state_) Clear();
  state_ = state;
}

void KnownEntries::Keep(const Entry& entry, std::span<const std::string> attributes) {
  // A whole object may hold anything, and much of it.
  if (attributes.empty()) return;
  if (!std::ranges::equal(attributes, attributes_)) {
    Clear();
    attributes_.assign(attributes.begin(), attributes.end());
  }
  if (entries_.size() >= kMost) Clear();
  entries_.insert_or_assign(entry.dn, entry);
}

const Entry* KnownEntries::Find(const std::string& dn,
                                std::span<const Modification> modifications) const {
  const auto found = entries_.find(dn);
  return found != entries_.end() && AreRead(modifications) ? &found->second : nullptr;
}

bool KnownEntries::AreRead(std::span<const Modification> modifications) const {
  return std::ranges::all_of(modifications, [this](const Modification& change) {
    return std::ranges::any_of(attributes_, [&change](const std::string& name) {
      return EqualsWithoutCase(name, change.attribute);
    });
  });
}

}  // namespace pelora::ldap
