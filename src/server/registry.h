// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/hresult.h"

namespace pelora {

/// The registry's classes root (HKEY_CLASSES_ROOT).
///
/// Keys are named by their path below the root, parts divided by `\`; names compare without case.
/// Texts are UTF-8. Each operation returns `S_OK` or says why it was refused.
class IClassesRegistry {
 public:
  virtual ~IClassesRegistry() = default;

  /// Makes a key, and those above it; one that is there already stays as it is.
  [[nodiscard]] virtual HRESULT CreateKey(const std::string& path) = 0;
  /// Sets a string value of a key that is there. No name: the key's default value.
  [[nodiscard]] virtual HRESULT SetValue(const std::string& path,
                                         const std::optional<std::string>& name,
                                         const std::string& value) = 0;
  /// Removes a value. One that is not there, or whose key is not, is `S_OK`.
  [[nodiscard]] virtual HRESULT DeleteValue(const std::string& path,
                                            const std::optional<std::string>& name) = 0;
  /// Removes a key with everything below it. One that is not there is `S_OK`.
  [[nodiscard]] virtual HRESULT DeleteTree(const std::string& path) = 0;
};

}  // namespace pelora
