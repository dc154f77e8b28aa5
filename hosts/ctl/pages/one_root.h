// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "directory/ascii_case.h"
#include "platform/ads.h"

namespace pelora::ctl {

/// A directory whose root entry is bound once. Every tab that is opened binds it, to see whether
/// the directory can be had: for one object after the other, each of which has just been read, that
/// would be a question to the server each time.
class OneRoot final : public IDirectoryService {
 public:
  /// The target outlives it, and it outlives the objects bound from it.
  explicit OneRoot(IDirectoryService& target) : target_(target) {}

  [[nodiscard]] HRESULT ADsGetObject(const std::string& path, const Guid& iid,
                                     Ref<IADs>& object) override {
    return target_.ADsGetObject(path, iid, object);
  }
  [[nodiscard]] HRESULT ADsOpenObject(const std::string& path,
                                      const std::optional<std::string>& user_name,
                                      const std::optional<std::string>& password,
                                      std::uint32_t flags, const Guid& iid,
                                      Ref<IADs>& object) override {
    const bool is_root =
        EqualsWithoutCase(path, "LDAP://rootDSE") && !user_name && !password && iid == IID_IADs;
    if (is_root && root_) {
      object = root_;
      return S_OK;
    }
    const HRESULT status = target_.ADsOpenObject(path, user_name, password, flags, iid, object);
    if (is_root && status == S_OK) root_ = object;
    return status;
  }
  [[nodiscard]] HRESULT BindPaths(std::span<const std::string> paths, const Guid& iid,
                                  std::vector<Ref<IADs>>& objects) override {
    return target_.BindPaths(paths, iid, objects);
  }

 private:
  IDirectoryService& target_;
  Ref<IADs> root_;
};

}  // namespace pelora::ctl
