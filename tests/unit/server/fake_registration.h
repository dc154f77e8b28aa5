// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "server/registration_ports.h"
#include "tests/support/fake_directory_state.h"

namespace pelora::testing {

/// Values of a registry key; the default value stands under the empty name.
using RegistryValues = std::map<std::string, std::string, NoCaseLess>;
/// Keys by path.
using RegistryKeys = std::map<std::string, RegistryValues, NoCaseLess>;

/// A classes root in memory. Everything that was done to it, to the thread's locale and to the type
/// library is one log, in order.
class FakeRegistration final : public IClassesRegistry, public IThreadLocale, public IModuleFile {
 public:
  [[nodiscard]] RegistrationPorts Ports() { return {*this, *this, *this}; }

  /// Makes the `nth` operation that can fail (1: the next) answer `status` and do nothing.
  void Fail(std::size_t nth, HRESULT status);

  [[nodiscard]] RegistryKeys& keys() { return keys_; }
  [[nodiscard]] const std::vector<std::string>& log() const { return log_; }
  /// Operations so far that could have failed.
  [[nodiscard]] std::size_t operations() const { return operations_; }
  [[nodiscard]] bool has_type_library() const { return has_type_library_; }
  /// The locale of each key or value written.
  [[nodiscard]] const std::vector<LocaleId>& writing_locales() const { return writing_locales_; }

  HRESULT CreateKey(const std::string& path) override;
  HRESULT SetValue(const std::string& path, const std::optional<std::string>& name,
                   const std::string& value) override;
  HRESULT DeleteValue(const std::string& path, const std::optional<std::string>& name) override;
  HRESULT DeleteTree(const std::string& path) override;

  LocaleId Get() const override { return locale_; }
  void Set(LocaleId locale) override { locale_ = locale; }

  std::string Path() const override { return "C:\\Program Files\\O'Neil\\PeloraADS.DLL"; }
  HRESULT ReadScript(std::uint16_t resource, std::string& text) const override;
  HRESULT RegisterTypeLibrary() const override;
  HRESULT UnregisterTypeLibrary() const override;

 private:
  [[nodiscard]] HRESULT Do(std::string operation) const;

  RegistryKeys keys_;
  LocaleId locale_ = 0x407;
  mutable bool has_type_library_ = false;
  mutable std::vector<std::string> log_;
  mutable std::vector<LocaleId> writing_locales_;
  mutable std::size_t operations_ = 0;
  std::size_t failing_operation_ = 0;
  HRESULT failure_ = S_OK;
};

}  // namespace pelora::testing
