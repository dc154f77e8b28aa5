// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>

#include "hosts/changes/change.h"
#include "hosts/ldap/directory_store.h"

namespace pelora::changes {

/// Is told of changes before they are sent: a file for taking them back, a print of what would be
/// done.
class IChangeLog {
 public:
  /// Numbers notes from 0, in their order.
  using NoteId = std::size_t;

  virtual ~IChangeLog() = default;

  /// Notes changes, in their order, before any of them is sent; `first` gets the number of the
  /// first. What is noted when this succeeds stays noted, whatever happens. On failure none of them
  /// may be sent.
  [[nodiscard]] virtual ldap::StoreStatus Note(std::span<const Change> changes, NoteId& first) = 0;

  /// The change of a note was not made, for certain.
  virtual void Withdraw(NoteId note) = 0;
};

}  // namespace pelora::changes
