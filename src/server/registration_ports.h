// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "server/registry.h"

namespace pelora {

/// Number of a locale, with the platform's numbers.
using LocaleId = std::uint32_t;
inline constexpr LocaleId kSystemDefaultLocale = 0x800;

/// The locale that the current thread works in.
class IThreadLocale {
 public:
  virtual ~IThreadLocale() = default;

  [[nodiscard]] virtual LocaleId Get() const = 0;
  virtual void Set(LocaleId locale) = 0;
};

/// The module as it lies on the disk, with what was built into it.
class IModuleFile {
 public:
  virtual ~IModuleFile() = default;

  /// Full path of the module's file, UTF-8.
  [[nodiscard]] virtual std::string Path() const = 0;
  /// Text of a registration script resource; on failure `text` is empty.
  [[nodiscard]] virtual HRESULT ReadScript(std::uint16_t resource, std::string& text) const = 0;
  /// Enters the module's type library into the registry.
  [[nodiscard]] virtual HRESULT RegisterTypeLibrary() const = 0;
  /// Removes it from there; `S_OK` also when it is not there.
  [[nodiscard]] virtual HRESULT UnregisterTypeLibrary() const = 0;
};

/// What the registration asks of the system.
struct RegistrationPorts {
  IClassesRegistry& registry;
  IThreadLocale& locale;
  IModuleFile& module_file;
};

}  // namespace pelora
