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

/// Forwards to another store, which outlives it, but for the changes that a test makes fail, and
/// writes down the names of the objects that were to be changed.
class FaultStore final : public ldap::ForwardingStore {
 public:
  explicit FaultStore(ldap::IDirectoryStore& target) : ForwardingStore(target) {}

  /// The `nth` change from now (1: the next) answers `status`. It is not passed on, unless it is to
  /// have been done all the same: its answer is lost then.
  void FailChange(std::size_t nth, ldap::StoreStatus status, bool is_done = false) {
    fault_ = {.calls_left = nth, .status = std::move(status), .is_done = is_done};
  }

  /// Every reading of entries answers `status` from now on; success: none does any more.
  void FailReading(ldap::StoreStatus status) { reading_ = std::move(status); }

  /// The same for searches.
  void FailSearching(ldap::StoreStatus status) { searching_ = std::move(status); }

  /// Objects of which every attribute was asked for.
  std::vector<std::string> read_whole;
  /// Objects that were to be changed, in order.
  std::vector<std::string> changed;
  /// Called before a change is passed on. May be none.
  std::function<void()> before_change;

  ldap::StoreStatus Read(const std::string& dn, std::span<const std::string> attributes,
                         ldap::Entry& entry) override {
    if (attributes.empty()) read_whole.push_back(dn);
    return reading_.Ok() ? ForwardingStore::Read(dn, attributes, entry) : reading_;
  }
  ldap::StoreStatus ReadMany(std::span<const std::string> dns,
                             std::span<const std::string> attributes,
                             const ldap::ReadSink& sink) override {
    return IDirectoryStore::ReadMany(dns, attributes, sink);
  }
  ldap::StoreStatus Search(const ldap::SearchRequest& request,
                           const ldap::EntrySink& sink) override {
    return searching_.Ok() ? ForwardingStore::Search(request, sink) : searching_;
  }
  ldap::StoreStatus Modify(const std::string& dn,
                           std::span<const ldap::Modification> modifications) override {
    return Change(dn, [&] { return ForwardingStore::Modify(dn, modifications); });
  }
  ldap::StoreStatus ModifyStrictly(const std::string& dn,
                                   std::span<const ldap::Modification> modifications) override {
    return Change(dn, [&] { return ForwardingStore::ModifyStrictly(dn, modifications); });
  }
  void ModifyManyStrictly(const ldap::ModifySource& next, const ldap::ModifySink& sink) override {
    IDirectoryStore::ModifyManyStrictly(next, sink);
  }
  ldap::StoreStatus Rename(const ldap::Entry& seen, const std::string& dn) override {
    return Change(seen.dn, [&] { return ForwardingStore::Rename(seen, dn); });
  }
  ldap::StoreStatus Remove(const ldap::Entry& seen, Extent extent) override {
    return Change(seen.dn, [&] { return ForwardingStore::Remove(seen, extent); });
  }
  ldap::StoreStatus Restore(const ldap::Entry& removed) override {
    return Change(removed.dn, [&] { return ForwardingStore::Restore(removed); });
  }

 private:
  struct Fault {
    std::size_t calls_left = 0;
    ldap::StoreStatus status;
    bool is_done = false;
  };

  ldap::StoreStatus Change(const std::string& dn, const std::function<ldap::StoreStatus()>& pass) {
    changed.push_back(dn);
    if (before_change) before_change();
    const bool fails = fault_ && --fault_->calls_left == 0;
    if (!fails) return pass();
    const Fault fault = *std::exchange(fault_, std::nullopt);
    if (fault.is_done) {
      if (ldap::StoreStatus done = pass(); !done.Ok()) return done;
    }
    return fault.status;
  }

  std::optional<Fault> fault_;
  ldap::StoreStatus reading_;
  ldap::StoreStatus searching_;
};

}  // namespace pelora::testing
