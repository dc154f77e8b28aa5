// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <span>
#include <string>

#include "hosts/ldap/directory_store.h"
#include "hosts/session/errands.h"

namespace pelora::session {

/// Forwards to a store, each request as an errand: for what asks a directory on the thread of a
/// window and must not hold it up while a server makes up its mind. A request that is stopped is
/// given up (-8; a change that was sent by then is unknown, -5).
///
/// What a request is handed, its sinks too, is called where the errand is done. Requests that are
/// made within another errand are made there and then.
class BesideStore final : public ldap::IDirectoryStore {
 public:
  /// Both outlive it. Nobody else uses `store` as long as requests are under way.
  BesideStore(ldap::IDirectoryStore& store, IErrands& errands) : store_(store), errands_(errands) {}

  [[nodiscard]] const ldap::Schema& schema() const override { return store_.schema(); }
  ldap::StoreStatus ReadRoot(ldap::Entry& root) override;
  ldap::StoreStatus Read(const std::string& dn, std::span<const std::string> attributes,
                         ldap::Entry& entry) override;
  ldap::StoreStatus ReadMany(std::span<const std::string> dns,
                             std::span<const std::string> attributes,
                             const ldap::ReadSink& sink) override;
  ldap::StoreStatus Search(const ldap::SearchRequest& request,
                           const ldap::EntrySink& sink) override;
  ldap::StoreStatus Modify(const std::string& dn,
                           std::span<const ldap::Modification> modifications) override;
  ldap::StoreStatus ModifyStrictly(const std::string& dn,
                                   std::span<const ldap::Modification> modifications) override;
  void ModifyManyStrictly(const ldap::ModifySource& next, const ldap::ModifySink& sink) override;
  ldap::StoreStatus Add(const ldap::Entry& entry) override;
  ldap::StoreStatus Delete(const ldap::Entry& made) override;
  ldap::StoreStatus Rename(const ldap::Entry& seen, const std::string& dn) override;
  ldap::StoreStatus Remove(const ldap::Entry& seen, Extent extent) override;
  ldap::StoreStatus Restore(const ldap::Entry& removed) override;
  void CompleteNew(ldap::Entry& entry) const override { store_.CompleteNew(entry); }
  /// For the requests of whole errands. Others are stopped by the person in front of them.
  void StopOn(const std::stop_token& stop) override { store_.StopOn(stop); }
  [[nodiscard]] bool IsSealed() const override { return store_.IsSealed(); }

 private:
  void Do(const char* what, const std::function<void()>& request);
  [[nodiscard]] ldap::StoreStatus Ask(const char* what,
                                      const std::function<ldap::StoreStatus()>& request);

  ldap::IDirectoryStore& store_;
  IErrands& errands_;
};

}  // namespace pelora::session
