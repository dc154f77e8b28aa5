// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <mutex>

#include "hosts/ldap/store_opener.h"

namespace pelora::ldap {

/// Taken for every request on any of the stores that share it.
using RequestMutex = std::shared_ptr<std::recursive_mutex>;

/// Forwards to a store whose requests must not coincide with those of other stores: stores of one
/// file, say, that are used on several threads. Each request waits for those under way, the end of
/// the store as well.
class SerializedStore final : public IDirectoryStore {
 public:
  SerializedStore(std::unique_ptr<IDirectoryStore> store, RequestMutex mutex);
  ~SerializedStore() override;
  SerializedStore(const SerializedStore&) = delete;
  SerializedStore& operator=(const SerializedStore&) = delete;

  [[nodiscard]] const Schema& schema() const override { return store_->schema(); }
  StoreStatus ReadRoot(Entry& root) override;
  StoreStatus Read(const std::string& dn, std::span<const std::string> attributes,
                   Entry& entry) override;
  /// The sinks are called within the request; they may ask for more on the same thread.
  StoreStatus ReadMany(std::span<const std::string> dns, std::span<const std::string> attributes,
                       const ReadSink& sink) override;
  StoreStatus Search(const SearchRequest& request, const EntrySink& sink) override;
  StoreStatus Modify(const std::string& dn, std::span<const Modification> modifications) override;
  StoreStatus ModifyStrictly(const std::string& dn,
                             std::span<const Modification> modifications) override;
  /// Requests are fetched, and their ends told, while others may ask.
  void ModifyManyStrictly(const ModifySource& next, const ModifySink& sink) override;
  StoreStatus Add(const Entry& entry) override;
  StoreStatus Delete(const Entry& made) override;
  void CompleteNew(Entry& entry) const override;
  void StopOn(const std::stop_token& stop) override { store_->StopOn(stop); }
  [[nodiscard]] bool IsSealed() const override { return store_->IsSealed(); }

 private:
  std::unique_ptr<IDirectoryStore> store_;
  RequestMutex mutex_;
};

/// Makes an opener whose stores, and what opens them, all wait for one another.
[[nodiscard]] StoreOpener SerializeStores(StoreOpener opener);

}  // namespace pelora::ldap
