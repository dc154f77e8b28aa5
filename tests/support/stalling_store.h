// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <mutex>
#include <span>
#include <stop_token>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "hosts/ldap/forwarding_store.h"
#include "hosts/ldap/ldap_status.h"

namespace pelora::testing {

/// Forwards to another store, which outlives it, as a server does that is far away or asleep. Its
/// switches may be used on any thread.
class StallingStore final : public ldap::ForwardingStore {
 public:
  explicit StallingStore(ldap::IDirectoryStore& target) : ForwardingStore(target) {}

  /// Requests wait from now on, until they are let go or stopped.
  void Stall() { is_stalled_ = true; }
  void LetGo() { is_stalled_ = false; }
  /// Each request takes so long from now on.
  void Slow(std::chrono::milliseconds pause) { pause_ = pause.count(); }
  /// Reading answers this from now on; success: no longer.
  void FailReading(ldap::StoreStatus status) { reading_ = std::move(status); }
  /// Requests that wait or have waited.
  [[nodiscard]] int asked() const { return asked_; }
  /// On which threads it was asked.
  [[nodiscard]] bool WasAskedBy(std::thread::id thread) const {
    const std::lock_guard lock(mutex_);
    return std::find(threads_.begin(), threads_.end(), thread) != threads_.end();
  }

  ldap::StoreStatus ReadRoot(ldap::Entry& root) override {
    return Read([&] { return ForwardingStore::ReadRoot(root); });
  }
  ldap::StoreStatus Read(const std::string& dn, std::span<const std::string> attributes,
                         ldap::Entry& entry) override {
    return Read([&] { return ForwardingStore::Read(dn, attributes, entry); });
  }
  ldap::StoreStatus ReadMany(std::span<const std::string> dns,
                             std::span<const std::string> attributes,
                             const ldap::ReadSink& sink) override {
    return Read([&] { return ForwardingStore::ReadMany(dns, attributes, sink); });
  }
  ldap::StoreStatus Search(const ldap::SearchRequest& request,
                           const ldap::EntrySink& sink) override {
    return Read([&] { return ForwardingStore::Search(request, sink); });
  }
  ldap::StoreStatus Modify(const std::string& dn,
                           std::span<const ldap::Modification> modifications) override {
    return Write([&] { return ForwardingStore::Modify(dn, modifications); });
  }
  ldap::StoreStatus ModifyStrictly(const std::string& dn,
                                   std::span<const ldap::Modification> modifications) override {
    return Write([&] { return ForwardingStore::ModifyStrictly(dn, modifications); });
  }
  void ModifyManyStrictly(const ldap::ModifySource& next, const ldap::ModifySink& sink) override {
    IDirectoryStore::ModifyManyStrictly(next, sink);
  }
  ldap::StoreStatus Add(const ldap::Entry& entry) override {
    return Write([&] { return ForwardingStore::Add(entry); });
  }
  ldap::StoreStatus Delete(const ldap::Entry& made) override {
    return Write([&] { return ForwardingStore::Delete(made); });
  }
  ldap::StoreStatus Rename(const ldap::Entry& seen, const std::string& dn) override {
    return Write([&] { return ForwardingStore::Rename(seen, dn); });
  }
  ldap::StoreStatus Remove(const ldap::Entry& seen, Extent extent) override {
    return Write([&] { return ForwardingStore::Remove(seen, extent); });
  }
  ldap::StoreStatus Restore(const ldap::Entry& removed) override {
    return Write([&] { return ForwardingStore::Restore(removed); });
  }
  void StopOn(const std::stop_token& stop) override { stop_ = stop; }

 private:
  ldap::StoreStatus Read(const std::function<ldap::StoreStatus()>& pass) {
    ldap::StoreStatus status = Wait(ldap::kLdapUserCancelled);
    if (status.Ok()) status = reading_;
    return status.Ok() ? pass() : status;
  }
  ldap::StoreStatus Write(const std::function<ldap::StoreStatus()>& pass) {
    ldap::StoreStatus status = Wait(ldap::kLdapTimeout);
    return status.Ok() ? pass() : status;
  }
  ldap::StoreStatus Wait(int when_stopped) {
    {
      const std::lock_guard lock(mutex_);
      threads_.push_back(std::this_thread::get_id());
    }
    ++asked_;
    std::this_thread::sleep_for(std::chrono::milliseconds(pause_));
    while (is_stalled_) {
      if (stop_.stop_requested()) return {when_stopped, "the request was stopped"};
      std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return {};
  }

  std::atomic<bool> is_stalled_ = false;
  std::atomic<long> pause_ = 0;
  std::atomic<int> asked_ = 0;
  ldap::StoreStatus reading_;
  std::stop_token stop_;
  mutable std::mutex mutex_;
  std::vector<std::thread::id> threads_;
};

}  // namespace pelora::testing
