// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "hosts/changes/change.h"
#include "hosts/ldap/directory_store.h"

namespace pelora::changes {

/// What a look at the directory says of a change that was sent and not answered.
struct LookedUp {
  enum class Answer : std::uint8_t {
    /// Everything is as wanted.
    kWritten,
    /// Everything was as before by then. A server may do it yet, or tell the one that was asked
    /// later.
    kNotWritten,
    kCannotBeTold,
  };
  Answer answer = Answer::kCannotBeTold;
  /// The same in words that go on behind "looked at since,".
  std::string text{};
  /// Whether the directory could be asked at all.
  bool is_reached = true;
};

/// Looks, by what was to be written. The store may be at another server of the directory by now.
[[nodiscard]] LookedUp LookUp(ldap::IDirectoryStore& store, const Change& change);

}  // namespace pelora::changes
