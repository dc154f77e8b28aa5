// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/ldb_record.h"

namespace pelora::ldap {

/// What was read of objects of a database, as long as nothing of the database has changed since: so
/// that who changes many objects that have just been read need not read each of them again to see
/// that it is as it was.
///
/// The state of a database is a number that grows with every change. Of a database in another state
/// than the one in which they were read the entries are forgotten.
class KnownEntries {
 public:
  /// More than these are not kept: they make room for the next. Enough for what is being written,
  /// what is being worked out meanwhile, and what is read for afterwards.
  static constexpr std::size_t kMost = 8192;

  using State = std::uint64_t;

  /// Forgets everything unless the database is in the state in which it was when this was told
  /// last.
  void SetState(State state);
  /// What is kept is good in another state too: only what was forgotten has changed.
  void MoveTo(State state) { state_ = state; }

  /// Keeps a record of which these attributes were read in the present state or later. What was
  /// read whole is not kept.
  void Keep(const LdbRecord& record, std::span<const std::string> attributes);
  /// The record of this very name when everything is known that the modifications are
  /// about; null otherwise. It is not known any more: it is about to change.
  [[nodiscard]] LdbRecord Take(const std::string& dn, std::span<const Modification> modifications);
  void Clear() { records_.clear(); }

 private:
  [[nodiscard]] bool AreRead(std::span<const Modification> modifications) const;

  State state_ = 0;
  /// What all of them were read with.
  std::vector<std::string> attributes_;
  std::unordered_map<std::string, LdbRecord> records_;
};

}  // namespace pelora::ldap
