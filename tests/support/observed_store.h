// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "hosts/ldap/forwarding_store.h"

namespace pelora::testing {

/// Forwards to another store, which outlives it, and counts what is asked of it: what a program
/// that waits for each answer would wait for.
class ObservedStore final : public ldap::ForwardingStore {
 public:
  explicit ObservedStore(ldap::IDirectoryStore& target) : ForwardingStore(target) {}

  /// Names of the objects that were read one by one, or written; many that were read together count
  /// as one, "and N more".
  std::vector<std::string> log;
  /// Called before a change is passed on, with the changes that there have been so far.
  std::function<void(std::size_t before)> before_modify;
  /// It says that nobody can listen, whatever the other says.
  bool is_sealed = false;

  ldap::StoreStatus ReadRoot(ldap::Entry& root) override {
    log.emplace_back("read root");
    return ForwardingStore::ReadRoot(root);
  }
  ldap::StoreStatus Read(const std::string& dn, std::span<const std::string> attributes,
                         ldap::Entry& entry) override {
    log.push_back("read " + dn);
    return ForwardingStore::Read(dn, attributes, entry);
  }
  ldap::StoreStatus ReadMany(std::span<const std::string> dns,
                             std::span<const std::string> attributes,
                             const ldap::ReadSink& sink) override {
    if (!dns.empty()) {
      log.push_back("read " + dns.front() +
                    (dns.size() == 1 ? "" : " and " + std::to_string(dns.size() - 1) + " more"));
    }
    return ForwardingStore::ReadMany(dns, attributes, sink);
  }
  ldap::StoreStatus Search(const ldap::SearchRequest& request,
                           const ldap::EntrySink& sink) override {
    log.push_back("search " + request.base);
    return ForwardingStore::Search(request, sink);
  }
  ldap::StoreStatus Modify(const std::string& dn,
                           std::span<const ldap::Modification> modifications) override {
    NoteModify("modify " + dn + ":", modifications);
    return ForwardingStore::Modify(dn, modifications);
  }
  ldap::StoreStatus ModifyStrictly(const std::string& dn,
                                   std::span<const ldap::Modification> modifications) override {
    NoteModify("modify strictly " + dn + ":", modifications);
    return ForwardingStore::ModifyStrictly(dn, modifications);
  }
  /// Each request is noted when it is fetched.
  void ModifyManyStrictly(const ldap::ModifySource& next, const ldap::ModifySink& sink) override {
    ForwardingStore::ModifyManyStrictly(
        [&] {
          std::optional<ldap::ModifyRequest> request = next();
          if (request) NoteModify("modify strictly " + request->dn + ":", request->modifications);
          return request;
        },
        sink);
  }
  ldap::StoreStatus Add(const ldap::Entry& entry) override {
    log.push_back("add " + entry.dn);
    return ForwardingStore::Add(entry);
  }
  ldap::StoreStatus Delete(const ldap::Entry& made) override {
    log.push_back("delete " + made.dn);
    return ForwardingStore::Delete(made);
  }
  ldap::StoreStatus Rename(const ldap::Entry& seen, const std::string& dn) override {
    log.push_back("rename " + seen.dn + " to " + dn);
    return ForwardingStore::Rename(seen, dn);
  }
  ldap::StoreStatus Remove(const ldap::Entry& seen, Extent extent) override {
    log.push_back("remove " + seen.dn + (extent == Extent::kAlone ? "" : " and all below"));
    return ForwardingStore::Remove(seen, extent);
  }
  ldap::StoreStatus Restore(const ldap::Entry& removed) override {
    log.push_back("restore " + removed.dn);
    return ForwardingStore::Restore(removed);
  }
  [[nodiscard]] bool IsSealed() const override { return is_sealed || ForwardingStore::IsSealed(); }

 private:
  void NoteModify(std::string line, std::span<const ldap::Modification> modifications) {
    if (before_modify) before_modify(modifies_);
    ++modifies_;
    for (const ldap::Modification& change : modifications) line += " " + change.attribute;
    log.push_back(std::move(line));
  }

  std::size_t modifies_ = 0;
};

}  // namespace pelora::testing
