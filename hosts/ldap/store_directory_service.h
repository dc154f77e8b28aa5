// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/store_object.h"
#include "platform/ads.h"

namespace pelora::ldap {

/// The directory port over a store: paths are bound to objects with a property cache, result codes
/// become the platform's statuses.
///
/// A path's server is not looked at: the store is the directory. `store` outlives the service and
/// every object bound from it.
class StoreDirectoryService final : public IDirectoryService {
 public:
  /// Failures are noted in `last_failure`, which services may share.
  explicit StoreDirectoryService(
      IDirectoryStore& store,
      std::shared_ptr<StoreStatus> last_failure = std::make_shared<StoreStatus>(),
      BindingOptions options = {});
  ~StoreDirectoryService() override;
  StoreDirectoryService(const StoreDirectoryService&) = delete;
  StoreDirectoryService& operator=(const StoreDirectoryService&) = delete;

  /// Reads the object's classes, and with them whether it is there.
  [[nodiscard]] HRESULT ADsGetObject(const std::string& path, const Guid& iid,
                                     Ref<IADs>& object) override;
  /// A user name or a password is refused with `E_ADS_BAD_PARAMETER`: the store was opened as the
  /// user who runs the program.
  [[nodiscard]] HRESULT ADsOpenObject(const std::string& path,
                                      const std::optional<std::string>& user_name,
                                      const std::optional<std::string>& password,
                                      std::uint32_t flags, const Guid& iid,
                                      Ref<IADs>& object) override;

  /// Reads the objects, so that none that was bound can fail to be read later.
  [[nodiscard]] HRESULT BindPaths(std::span<const std::string> paths, const Guid& iid,
                                  std::vector<Ref<IADs>>& objects) override;

  /// What the store said of the last request that failed, through the service or an object bound
  /// from it: the words behind the status that the caller got. Success when none has failed yet.
  [[nodiscard]] const StoreStatus& last_failure() const;

 private:
  [[nodiscard]] HRESULT BindNames(std::span<const std::string> dns, const Guid& iid,
                                  std::vector<Ref<IADs>>& objects);
  [[nodiscard]] HRESULT Answer(StoreStatus status);

  IDirectoryStore& store_;
  std::shared_ptr<StoreStatus> last_failure_;
  StoreObject::Options options_;
};

}  // namespace pelora::ldap
