// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "hosts/windows/system_headers.h"
#include "server/registration_ports.h"

namespace pelora::windows {

/// The module's own file: its path, its registration scripts and its type library.
class Win32ModuleFile final : public IModuleFile {
 public:
  /// `path` is that of the module `instance`.
  Win32ModuleFile(HINSTANCE instance, std::wstring path)
      : instance_(instance), path_(std::move(path)) {}

  [[nodiscard]] std::string Path() const override;
  [[nodiscard]] HRESULT ReadScript(std::uint16_t resource, std::string& text) const override;
  [[nodiscard]] HRESULT RegisterTypeLibrary() const override;
  [[nodiscard]] HRESULT UnregisterTypeLibrary() const override;

 private:
  HINSTANCE instance_;
  std::wstring path_;
};

}  // namespace pelora::windows
