// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "hosts/ldap/forwarding_store.h"

namespace pelora::testing {

/// Forwards to another store, which outlives it, and makes one request fail, whatever it is. Every
/// request counts, and each object of a reading of many besides.
class CallFaultStore final : public ldap::ForwardingStore {
 public:
  explicit CallFaultStore(ldap::IDirectoryStore& target) : ForwardingStore(target) {}

  struct Fault {
    ldap::StoreStatus status;
    /// A change is done all the same: its answer is lost.
    bool is_done = false;
  };
  /// What was made to fail.
  struct Met {
    bool is_change = false;
    /// Empty for a reading of many.
    std::string dn;
    std::string why{};
  };

  /// The `nth` request from now (1: the next) fails; 0: none.
  void Fail(std::size_t nth, Fault fault) {
    left_ = nth;
    fault_ = std::move(fault);
    met_.reset();
  }
  [[nodiscard]] std::size_t calls() const { return calls_; }
  [[nodiscard]] const std::optional<Met>& met() const { return met_; }

  ldap::StoreStatus ReadRoot(ldap::Entry& root) override {
    return Ask("rootDSE", [&] { return ForwardingStore::ReadRoot(root); });
  }
  ldap::StoreStatus Read(const std::string& dn, std::span<const std::string> attributes,
                         ldap::Entry& entry) override {
    return Ask(dn, [&] { return ForwardingStore::Read(dn, attributes, entry); });
  }
  ldap::StoreStatus ReadMany(std::span<const std::string> dns,
                             std::span<const std::string> attributes,
                             const ldap::ReadSink& sink) override {
    // Each of them is a request of its own.
    return Ask("", [&] { return IDirectoryStore::ReadMany(dns, attributes, sink); });
  }
  ldap::StoreStatus Search(const ldap::SearchRequest& request,
                           const ldap::EntrySink& sink) override {
    return Ask(request.base, [&] { return ForwardingStore::Search(request, sink); });
  }
  ldap::StoreStatus Modify(const std::string& dn,
                           std::span<const ldap::Modification> modifications) override {
    return Do(dn, [&] { return ForwardingStore::Modify(dn, modifications); });
  }
  ldap::StoreStatus ModifyStrictly(const std::string& dn,
                                   std::span<const ldap::Modification> modifications) override {
    return Do(dn, [&] { return ForwardingStore::ModifyStrictly(dn, modifications); });
  }
  void ModifyManyStrictly(const ldap::ModifySource& next, const ldap::ModifySink& sink) override {
    IDirectoryStore::ModifyManyStrictly(next, sink);
  }
  ldap::StoreStatus Add(const ldap::Entry& entry) override {
    return Do(entry.dn, [&] { return ForwardingStore::Add(entry); });
  }
  ldap::StoreStatus Delete(const ldap::Entry& made) override {
    return Do(made.dn, [&] { return ForwardingStore::Delete(made); });
  }
  ldap::StoreStatus Rename(const ldap::Entry& seen, const std::string& dn) override {
    return Do(seen.dn, [&] { return ForwardingStore::Rename(seen, dn); });
  }
  ldap::StoreStatus Remove(const ldap::Entry& seen, Extent extent) override {
    return Do(seen.dn, [&] { return ForwardingStore::Remove(seen, extent); });
  }
  ldap::StoreStatus Restore(const ldap::Entry& removed) override {
    return Do(removed.dn, [&] { return ForwardingStore::Restore(removed); });
  }

 private:
  using Request = std::function<ldap::StoreStatus()>;

  bool Counts(bool is_change, const std::string& dn) {
    ++calls_;
    if (left_ == 0 || --left_ > 0) return false;
    met_ = {.is_change = is_change, .dn = dn, .why = fault_.status.text};
    return true;
  }
  ldap::StoreStatus Ask(const std::string& dn, const Request& request) {
    return Counts(false, dn) ? fault_.status : request();
  }
  ldap::StoreStatus Do(const std::string& dn, const Request& request) {
    if (!Counts(true, dn)) return request();
    if (fault_.is_done) {
      if (ldap::StoreStatus done = request(); !done.Ok()) return done;
    }
    return fault_.status;
  }

  std::size_t calls_ = 0;
  std::size_t left_ = 0;
  Fault fault_;
  std::optional<Met> met_;
};

}  // namespace pelora::testing
