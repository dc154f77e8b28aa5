// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "server/registry.h"

namespace pelora::windows {

/// The system's classes root.
class Win32ClassesRegistry final : public IClassesRegistry {
 public:
  [[nodiscard]] HRESULT CreateKey(const std::string& path) override;
  [[nodiscard]] HRESULT SetValue(const std::string& path, const std::optional<std::string>& name,
                                 const std::string& value) override;
  [[nodiscard]] HRESULT DeleteValue(const std::string& path,
                                    const std::optional<std::string>& name) override;
  [[nodiscard]] HRESULT DeleteTree(const std::string& path) override;
};

}  // namespace pelora::windows
