// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <stop_token>
#include <string>

#include "hosts/ldap/directory_store.h"
#include "hosts/session/change_history.h"

namespace pelora::session {

/// Forwards to a store, and keeps in a history what is added through it, before it is sent: it can
/// be taken back as every change can, which deletes the object when it is still as it was made.
class NotedAdditions final : public ldap::IDirectoryStore {
 public:
  /// Both outlive it.
  NotedAdditions(ldap::IDirectoryStore& target, ChangeHistory& history)
      : target_(target), history_(history) {}

  [[nodiscard]] const ldap::Schema& schema() const override { return target_.schema(); }
  ldap::StoreStatus ReadRoot(ldap::Entry& root) override { return target_.ReadRoot(root); }
  ldap::StoreStatus Read(const std::string& dn, std::span<const std::string> attributes,
                         ldap::Entry& entry) override {
    return target_.Read(dn, attributes, entry);
  }
  ldap::StoreStatus ReadMany(std::span<const std::string> dns,
                             std::span<const std::string> attributes,
                             const ldap::ReadSink& sink) override {
    return target_.ReadMany(dns, attributes, sink);
  }
  ldap::StoreStatus Search(const ldap::SearchRequest& request,
                           const ldap::EntrySink& sink) override {
    return target_.Search(request, sink);
  }
  ldap::StoreStatus Modify(const std::string& dn,
                           std::span<const ldap::Modification> modifications) override {
    return target_.Modify(dn, modifications);
  }
  ldap::StoreStatus ModifyStrictly(const std::string& dn,
                                   std::span<const ldap::Modification> modifications) override {
    return target_.ModifyStrictly(dn, modifications);
  }
  /// What cannot be kept is added all the same, as it is with other changes.
  ldap::StoreStatus Add(const ldap::Entry& entry) override;
  ldap::StoreStatus Delete(const ldap::Entry& made) override { return target_.Delete(made); }
  void CompleteNew(ldap::Entry& entry) const override { target_.CompleteNew(entry); }
  void StopOn(const std::stop_token& stop) override { target_.StopOn(stop); }
  [[nodiscard]] bool IsSealed() const override { return target_.IsSealed(); }

 private:
  ldap::IDirectoryStore& target_;
  ChangeHistory& history_;
};

}  // namespace pelora::session
