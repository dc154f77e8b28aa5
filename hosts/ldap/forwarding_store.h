// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <stop_token>
#include <string>

#include "hosts/ldap/directory_store.h"

namespace pelora::ldap {

/// Hands every request on to another store, which outlives it: the base of those that look on, or
/// come in between, at some of them.
///
/// Requests of many objects at once are handed on as such. Who comes in between at single ones
/// takes them apart, into requests of its own: `IDirectoryStore::ReadMany` and
/// `IDirectoryStore::ModifyManyStrictly` do that.
class ForwardingStore : public IDirectoryStore {
 public:
  explicit ForwardingStore(IDirectoryStore& target) : target_(target) {}

  [[nodiscard]] const Schema& schema() const override { return target_.schema(); }
  StoreStatus ReadRoot(Entry& root) override { return target_.ReadRoot(root); }
  StoreStatus Read(const std::string& dn, std::span<const std::string> attributes,
                   Entry& entry) override {
    return target_.Read(dn, attributes, entry);
  }
  StoreStatus ReadMany(std::span<const std::string> dns, std::span<const std::string> attributes,
                       const ReadSink& sink) override {
    return target_.ReadMany(dns, attributes, sink);
  }
  StoreStatus Search(const SearchRequest& request, const EntrySink& sink) override {
    return target_.Search(request, sink);
  }
  StoreStatus Modify(const std::string& dn, std::span<const Modification> modifications) override {
    return target_.Modify(dn, modifications);
  }
  StoreStatus ModifyStrictly(const std::string& dn,
                             std::span<const Modification> modifications) override {
    return target_.ModifyStrictly(dn, modifications);
  }
  void ModifyManyStrictly(const ModifySource& next, const ModifySink& sink) override {
    target_.ModifyManyStrictly(next, sink);
  }
  StoreStatus Add(const Entry& entry) override { return target_.Add(entry); }
  StoreStatus Delete(const Entry& made) override { return target_.Delete(made); }
  StoreStatus Rename(const Entry& seen, const std::string& dn) override {
    return target_.Rename(seen, dn);
  }
  StoreStatus Remove(const Entry& seen, Extent extent) override {
    return target_.Remove(seen, extent);
  }
  StoreStatus Restore(const Entry& removed) override { return target_.Restore(removed); }
  void CompleteNew(Entry& entry) const override { target_.CompleteNew(entry); }
  void StopOn(const std::stop_token& stop) override { target_.StopOn(stop); }
  [[nodiscard]] bool IsSealed() const override { return target_.IsSealed(); }

 protected:
  [[nodiscard]] IDirectoryStore& target() const { return target_; }

 private:
  IDirectoryStore& target_;
};

}  // namespace pelora::ldap
