// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/serialized_store.h"

#include <optional>
#include <utility>
#include <vector>

namespace pelora::ldap {

using Lock = std::lock_guard<std::recursive_mutex>;

SerializedStore::SerializedStore(std::unique_ptr<IDirectoryStore> store, RequestMutex mutex)
    : store_(std::move(store)), mutex_(std::move(mutex)) {}

SerializedStore::~SerializedStore() {
  const Lock lock(*mutex_);
  store_.reset();
}

StoreStatus SerializedStore::ReadRoot(Entry& root) {
  const Lock lock(*mutex_);
  return store_->ReadRoot(root);
}

StoreStatus SerializedStore::Read(const std::string& dn, std::span<const std::string> attributes,
                                  Entry& entry) {
  const Lock lock(*mutex_);
  return store_->Read(dn, attributes, entry);
}

StoreStatus SerializedStore::ReadMany(std::span<const std::string> dns,
                                      std::span<const std::string> attributes,
                                      const ReadSink& sink) {
  const Lock lock(*mutex_);
  return store_->ReadMany(dns, attributes, sink);
}

StoreStatus SerializedStore::Search(const SearchRequest& request, const EntrySink& sink) {
  const Lock lock(*mutex_);
  return store_->Search(request, sink);
}

StoreStatus SerializedStore::Modify(const std::string& dn,
                                    std::span<const Modification> modifications) {
  const Lock lock(*mutex_);
  return store_->Modify(dn, modifications);
}

StoreStatus SerializedStore::ModifyStrictly(const std::string& dn,
                                            std::span<const Modification> modifications) {
  const Lock lock(*mutex_);
  return store_->ModifyStrictly(dn, modifications);
}

void SerializedStore::ModifyManyStrictly(const ModifySource& next, const ModifySink& sink) {
  constexpr std::size_t kTogether = 256;
  bool is_more = true;
  while (is_more) {
    std::vector<ModifyRequest> group;
    while (is_more && group.size() < kTogether) {
      std::optional<ModifyRequest> request = next();
      is_more = request.has_value();
      if (request) group.push_back(std::move(*request));
    }
    std::vector<StoreStatus> outcomes;
    {
      const Lock lock(*mutex_);
      std::size_t at = 0;
      store_->ModifyManyStrictly(
          [&]() -> std::optional<ModifyRequest> {
            if (at == group.size()) return std::nullopt;
            return std::move(group[at++]);
          },
          [&](StoreStatus status) { outcomes.push_back(std::move(status)); });
    }
    for (StoreStatus& status : outcomes) sink(std::move(status));
  }
}

StoreStatus SerializedStore::Add(const Entry& entry) {
  const Lock lock(*mutex_);
  return store_->Add(entry);
}

void SerializedStore::CompleteNew(Entry& entry) const {
  const Lock lock(*mutex_);
  store_->CompleteNew(entry);
}

StoreStatus SerializedStore::Delete(const Entry& made) {
  const Lock lock(*mutex_);
  return store_->Delete(made);
}

StoreOpener SerializeStores(StoreOpener opener) {
  auto mutex = std::make_shared<std::recursive_mutex>();
  return [opener = std::move(opener), mutex](std::unique_ptr<IDirectoryStore>& store,
                                             const std::stop_token& stop) {
    store.reset();
    const Lock lock(*mutex);
    std::unique_ptr<IDirectoryStore> opened;
    StoreStatus status = opener(opened, stop);
    if (status.Ok()) store = std::make_unique<SerializedStore>(std::move(opened), mutex);
    return status;
  };
}

}  // namespace pelora::ldap
