// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/ads.h"

namespace pelora::windows {

/// The directory through the system's own directory interfaces.
class AdsDirectory final : public IDirectoryService {
 public:
  [[nodiscard]] HRESULT ADsGetObject(const std::string& path, const Guid& iid,
                                     Ref<IADs>& object) override;
  [[nodiscard]] HRESULT ADsOpenObject(const std::string& path,
                                      const std::optional<std::string>& user_name,
                                      const std::optional<std::string>& password,
                                      std::uint32_t flags, const Guid& iid,
                                      Ref<IADs>& object) override;
};

}  // namespace pelora::windows
