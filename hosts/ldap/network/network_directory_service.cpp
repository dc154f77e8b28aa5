// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/network_directory_service.h"

#include <iterator>
#include <utility>

#include "hosts/ldap/ads_path.h"
#include "hosts/ldap/ldap_status.h"

namespace pelora::ldap {

NetworkDirectoryService::NetworkDirectoryService(ServerName home, IDirectoryStore& home_store,
                                                 ServerStoreOpener open)
    : home_(std::move(home)), open_(std::move(open)), home_service_(home_store, last_failure_) {}

StoreDirectoryService* NetworkDirectoryService::ServiceOf(const std::string& path,
                                                          HRESULT& status) {
  AdsPath parsed;
  status = ParseAdsPath(path, parsed);
  if (FAILED(status)) return nullptr;
  if (parsed.server.empty()) return &home_service_;
  const std::optional<ServerName> server = ParseServerName(parsed.server);
  if (!server) {
    status = E_ADS_BAD_PATHNAME;
    return nullptr;
  }
  if (server == home_) return &home_service_;
  if (const auto known = others_.find(*server); known != others_.end()) {
    return known->second.service.get();
  }
  Member member;
  if (StoreStatus opened = open_(*server, member.store); !opened.Ok()) {
    status = HresultOfLdap(opened.code);
    *last_failure_ = std::move(opened);
    return nullptr;
  }
  member.service = std::make_unique<StoreDirectoryService>(*member.store, last_failure_);
  return others_.emplace(*server, std::move(member)).first->second.service.get();
}

HRESULT NetworkDirectoryService::ADsGetObject(const std::string& path, const Guid& iid,
                                              Ref<IADs>& object) {
  object.Reset();
  HRESULT status = S_OK;
  StoreDirectoryService* const service = ServiceOf(path, status);
  return service == nullptr ? status : service->ADsGetObject(path, iid, object);
}

HRESULT NetworkDirectoryService::ADsOpenObject(const std::string& path,
                                               const std::optional<std::string>& user_name,
                                               const std::optional<std::string>& password,
                                               std::uint32_t flags, const Guid& iid,
                                               Ref<IADs>& object) {
  object.Reset();
  HRESULT status = S_OK;
  StoreDirectoryService* const service = ServiceOf(path, status);
  return service == nullptr ? status
                            : service->ADsOpenObject(path, user_name, password, flags, iid, object);
}

HRESULT NetworkDirectoryService::BindPaths(std::span<const std::string> paths, const Guid& iid,
                                           std::vector<Ref<IADs>>& objects) {
  objects.clear();
  std::vector<Ref<IADs>> bound;
  HRESULT status = S_OK;
  while (!paths.empty()) {
    StoreDirectoryService* const service = ServiceOf(paths.front(), status);
    if (service == nullptr) return status;
    // As many as follow each other on one server are bound together.
    std::size_t count = 1;
    while (count < paths.size() && ServiceOf(paths[count], status) == service) ++count;
    std::vector<Ref<IADs>> some;
    status = service->BindPaths(paths.first(count), iid, some);
    if (status != S_OK) return status;
    std::ranges::move(some, std::back_inserter(bound));
    paths = paths.subspan(count);
  }
  objects = std::move(bound);
  return S_OK;
}

}  // namespace pelora::ldap
