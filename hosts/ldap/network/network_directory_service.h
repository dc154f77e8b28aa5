// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "hosts/ldap/network/server_name.h"
#include "hosts/ldap/store_directory_service.h"

namespace pelora::ldap {

/// Opens a store of a server that a path names.
using ServerStoreOpener =
    std::function<StoreStatus(const ServerName& server, std::unique_ptr<IDirectoryStore>& store)>;

/// The directory port over the servers of a network: `LDAP://DN` and `LDAP://rootDSE` are the home
/// server's, `LDAP://server/DN` and `LDAP://server/rootDSE` that server's, to which a connection of
/// its own is opened when it is first named.
///
/// The home store outlives the service; the other servers' stores belong to it, so that the service
/// outlives the objects bound from it.
class NetworkDirectoryService final : public IDirectoryService {
 public:
  NetworkDirectoryService(ServerName home, IDirectoryStore& home_store, ServerStoreOpener open);
  NetworkDirectoryService(const NetworkDirectoryService&) = delete;
  NetworkDirectoryService& operator=(const NetworkDirectoryService&) = delete;

  /// A server name that is none is `E_ADS_BAD_PATHNAME`; one that cannot be reached gives its own
  /// failure. The rest is as with `StoreDirectoryService`.
  [[nodiscard]] HRESULT ADsGetObject(const std::string& path, const Guid& iid,
                                     Ref<IADs>& object) override;
  [[nodiscard]] HRESULT ADsOpenObject(const std::string& path,
                                      const std::optional<std::string>& user_name,
                                      const std::optional<std::string>& password,
                                      std::uint32_t flags, const Guid& iid,
                                      Ref<IADs>& object) override;
  [[nodiscard]] HRESULT BindPaths(std::span<const std::string> paths, const Guid& iid,
                                  std::vector<Ref<IADs>>& objects) override;

  /// What the server said of the last request that failed, whichever server that was.
  [[nodiscard]] const StoreStatus& last_failure() const { return *last_failure_; }

 private:
  struct Member {
    std::unique_ptr<IDirectoryStore> store;
    std::unique_ptr<StoreDirectoryService> service;
  };

  /// The service that a path belongs to; null when its server cannot be had, with the reason.
  StoreDirectoryService* ServiceOf(const std::string& path, HRESULT& status);

  ServerName home_;
  ServerStoreOpener open_;
  std::shared_ptr<StoreStatus> last_failure_ = std::make_shared<StoreStatus>();
  StoreDirectoryService home_service_;
  std::map<ServerName, Member> others_;
};

}  // namespace pelora::ldap
