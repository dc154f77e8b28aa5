// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/ads.h"

namespace pelora::windows {

/// The directory through the system's own directory interfaces.
///
/// An attribute that cannot be read looks like one that is not set, so a server that goes away
/// between binding and reading would give a blank page, and an apply would write the blanks. An
/// object is therefore read whole when it is bound (its first read would have done so), and a
/// directory that cannot be asked then is a binding that failed.
///
/// Any other success than `S_OK` may come without an object. So may an opening with `S_OK`: who
/// opens to test the connection looks at the status alone, which is the system's.
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
