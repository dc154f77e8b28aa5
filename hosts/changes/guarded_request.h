// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "hosts/changes/change.h"
#include "hosts/changes/result.h"
#include "hosts/ldap/directory_store.h"

namespace pelora::changes {

/// What is sent for a modification, strictly (`IDirectoryStore::ModifyStrictly`): for each
/// attribute the removal of what was seen and is not wanted, then the addition of what is wanted
/// and was not seen. Of an attribute of one value an addition alone says that it was not set.
[[nodiscard]] std::vector<ldap::Modification> GuardedRequest(const ldap::Schema& schema,
                                                             const Change& change);

/// What it means that somebody else has done a part of a list's change, or all of an addition.
enum class Lists : std::uint8_t {
  /// That part is taken off: two people's changes are merged. An object that is there is in the
  /// way.
  kMerged,
  /// It is a conflict: for taking a change back, of what nobody has touched since. An object that
  /// is there as it was made is back already. Of a list of which all is known
  /// (`ValueChange::is_whole`) everything is a conflict that makes it neither as seen nor as
  /// wanted.
  kUntouched,
};

/// How a modification that the directory refused stands to what is there now.
struct Standing {
  /// Attributes that somebody else changed, in the change's order.
  std::vector<Conflict> conflicts;
  /// What is left to do where nothing is in conflict: `seen` is what is there.
  Change rest;
  /// Whether `rest` is less than the change was: something has been done by somebody else.
  bool is_less = false;
};

/// Compares a modification with the object as it is.
[[nodiscard]] Standing StandingOf(const ldap::Schema& schema, const Change& change,
                                  const ldap::Entry& there, Lists lists = Lists::kMerged);

}  // namespace pelora::changes
