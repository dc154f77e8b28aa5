// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/ctl/fields/fields.h"
#include "hosts/ctl/pages/page_platform.h"
#include "platform/ads.h"

namespace pelora::ctl {

/// The directory port where there is no directory.
class NoDirectory final : public IDirectoryService {
 public:
  [[nodiscard]] HRESULT ADsGetObject(const std::string& /*path*/, const Guid& /*iid*/,
                                     Ref<IADs>& /*object*/) override {
    return kNoSuchObject;
  }
  [[nodiscard]] HRESULT ADsOpenObject(const std::string& /*path*/,
                                      const std::optional<std::string>& /*user_name*/,
                                      const std::optional<std::string>& /*password*/,
                                      std::uint32_t /*flags*/, const Guid& /*iid*/,
                                      Ref<IADs>& /*object*/) override {
    return kNoSuchObject;
  }
};

/// The fields of the classes with the tabs that the extension itself has for them, for what can be
/// said before any directory is open.
struct OfflineCatalogue {
  /// `module` outlives the catalogue.
  explicit OfflineCatalogue(const resources::ResourceFile& module);

  NoDirectory directory;
  PagePlatform platform;
  ldap::DisplaySpecifiers specifiers;
  FieldCatalogue catalogue;
};

}  // namespace pelora::ctl
