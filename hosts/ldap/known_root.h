// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <utility>

#include "hosts/ldap/forwarding_store.h"

namespace pelora::ldap {

/// Hands every request on to another store, which outlives it, but asks only once what the
/// directory says of itself: that does not change while one works with it, and everybody asks for
/// it. What could not be read is asked for again.
class KnownRoot final : public ForwardingStore {
 public:
  using ForwardingStore::ForwardingStore;

  StoreStatus ReadRoot(Entry& root) override {
    if (!root_) {
      Entry read;
      if (StoreStatus status = ForwardingStore::ReadRoot(read); !status.Ok()) return status;
      root_ = std::move(read);
    }
    root = *root_;
    return {};
  }

 private:
  std::optional<Entry> root_;
};

}  // namespace pelora::ldap
