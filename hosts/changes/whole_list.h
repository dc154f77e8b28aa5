// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "hosts/changes/change.h"
#include "hosts/ldap/schema.h"

namespace pelora::changes {

/// Makes a list's change a whole one (`ValueChange::is_whole`): `there` is what the list holds, and
/// what the change takes out of it, whether it is there or not, and puts in stays the same. Values
/// are told apart as a directory does, texts and names without case; what goes is spelled as there.
void CompleteList(ldap::Syntax syntax, const AttributeValues& there, ValueChange& value);

/// The same for all lists of a change; `there` is the object.
void CompleteLists(const ldap::Schema& schema, const ldap::Entry& there, Change& change);

/// How a list stands to a change of which all is known.
enum class ListStanding : std::uint8_t {
  kAsWanted,
  kAsSeen,
  /// Somebody has put something in or taken something out.
  kTouched,
};

/// Compares as a directory does: as sets, texts and names without case. Where the change is about
/// the case of a letter, that counts.
[[nodiscard]] ListStanding StandingOfWhole(ldap::Syntax syntax, const ValueChange& value,
                                           const AttributeValues& there);

/// Whether a change is one of lists of which all is known. No request can ask a directory whether a
/// list holds nothing else.
[[nodiscard]] bool HasWholeList(const Change& change);

}  // namespace pelora::changes
