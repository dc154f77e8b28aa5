// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/choosers.h"

namespace pelora::windows {

/// The system's directory choosers.
class Win32Choosers final : public IChoosers {
 public:
  [[nodiscard]] HRESULT CreateObjectPicker(std::unique_ptr<IDsObjectPicker>& chooser) override;
  [[nodiscard]] HRESULT CreateCommonQuery(std::unique_ptr<ICommonQuery>& chooser) override;
  [[nodiscard]] std::int32_t BrowseForContainer(const ContainerBrowserInit& init,
                                                std::string& path) override;
};

}  // namespace pelora::windows
