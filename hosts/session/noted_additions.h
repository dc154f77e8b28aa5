// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/ldap/forwarding_store.h"
#include "hosts/session/change_history.h"

namespace pelora::session {

/// Forwards to a store, and keeps in a history what is added through it, before it is sent: it can
/// be taken back as every change can, which deletes the object when it is still as it was made.
class NotedAdditions final : public ldap::ForwardingStore {
 public:
  /// Both outlive it.
  NotedAdditions(ldap::IDirectoryStore& target, ChangeHistory& history)
      : ForwardingStore(target), history_(history) {}

  /// What cannot be kept is added all the same, as it is with other changes.
  ldap::StoreStatus Add(const ldap::Entry& entry) override;

 private:
  ChangeHistory& history_;
};

}  // namespace pelora::session
