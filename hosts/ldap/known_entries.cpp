// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/known_entries.h"

#include <algorithm>
#include <utility>

#include "directory/ascii_case.h"
#include "hosts/ldap/ldb_api.h"

namespace pelora::ldap {

void KnownEntries::SetState(State state) {
  if (state != state_) Clear();
  state_ = state;
}

void KnownEntries::Keep(const LdbRecord& record, std::span<const std::string> attributes) {
  // A whole object may hold anything, and much of it.
  if (attributes.empty()) return;
  if (!std::ranges::equal(attributes, attributes_)) {
    Clear();
    attributes_.assign(attributes.begin(), attributes.end());
  }
  if (records_.size() >= kMost) Clear();
  records_.insert_or_assign(ldb_dn_get_linearized(record->dn), record);
}

LdbRecord KnownEntries::Take(const std::string& dn, std::span<const Modification> modifications) {
  const auto found = records_.find(dn);
  if (found == records_.end()) return nullptr;
  LdbRecord record = std::move(found->second);
  records_.erase(found);
  return AreRead(modifications) ? std::move(record) : nullptr;
}

bool KnownEntries::AreRead(std::span<const Modification> modifications) const {
  return std::ranges::all_of(modifications, [this](const Modification& change) {
    return std::ranges::any_of(attributes_, [&change](const std::string& name) {
      return EqualsWithoutCase(name, change.attribute);
    });
  });
}

}  // namespace pelora::ldap
