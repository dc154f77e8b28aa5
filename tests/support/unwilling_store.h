// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <functional>
#include <span>
#include <string>
#include <utility>

#include "hosts/ldap/forwarding_store.h"

namespace pelora::testing {

/// Forwards to another store, which outlives it, but refuses changes as it is told, until it is
/// mended. It may be mended on any thread.
class UnwillingStore final : public ldap::ForwardingStore {
 public:
  /// What becomes of the change that is asked for as the so manieth (1: the first); success: it is
  /// made.
  using Refuse = std::function<ldap::StoreStatus(int asked)>;

  UnwillingStore(ldap::IDirectoryStore& target, Refuse refuse)
      : ForwardingStore(target), refuse_(std::move(refuse)) {}

  /// Nothing is refused any more.
  void Mend() { is_mended_ = true; }

  ldap::StoreStatus ModifyStrictly(const std::string& dn,
                                   std::span<const ldap::Modification> modifications) override {
    const ldap::StoreStatus refusal = is_mended_ ? ldap::StoreStatus() : refuse_(++asked_);
    return refusal.Ok() ? ForwardingStore::ModifyStrictly(dn, modifications) : refusal;
  }
  void ModifyManyStrictly(const ldap::ModifySource& next, const ldap::ModifySink& sink) override {
    IDirectoryStore::ModifyManyStrictly(next, sink);
  }

 private:
  const Refuse refuse_;
  std::atomic<int> asked_ = 0;
  std::atomic<bool> is_mended_ = false;
};

}  // namespace pelora::testing
