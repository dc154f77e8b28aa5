// SPDX-License-Identifier: Apache-2.0
// Reads any bytes as a registration script; whatever was read is written to a registry and removed
// again.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <set>
#include <string>
#include <string_view>

#include "server/registration_script.h"
#include "server/script_registrar.h"

namespace {

/// Keeps the paths of keys.
class KeyPaths final : public pelora::IClassesRegistry {
 public:
  [[nodiscard]] pelora::HRESULT CreateKey(const std::string& path) override {
    paths_.insert(path);
    return pelora::S_OK;
  }
  [[nodiscard]] pelora::HRESULT SetValue(const std::string& path,
                                         const std::optional<std::string>& /*name*/,
                                         const std::string& /*value*/) override {
    return paths_.contains(path) ? pelora::S_OK : pelora::E_UNEXPECTED;
  }
  [[nodiscard]] pelora::HRESULT DeleteValue(const std::string& /*path*/,
                                            const std::optional<std::string>& /*name*/) override {
    return pelora::S_OK;
  }
  [[nodiscard]] pelora::HRESULT DeleteTree(const std::string& path) override {
    const std::string below = path + '\\';
    std::erase_if(paths_, [&](const std::string& known) {
      return known == path || known.starts_with(below);
    });
    return pelora::S_OK;
  }

 private:
  std::set<std::string> paths_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view script(reinterpret_cast<const char*>(data), size);
  const pelora::ReadScriptResult read = pelora::ReadRegistrationScript(
      script, {{"CLSID", "{1}"}, {"MODULE", "C:\\a 'b' {c}\\d.dll"}});
  if (read.keys.has_value() != read.error.empty()) std::abort();
  if (!read.keys) return 0;
  KeyPaths registry;
  if (pelora::RegisterScript(*read.keys, registry) != pelora::S_OK) std::abort();
  if (pelora::UnregisterScript(*read.keys, registry) != pelora::S_OK) std::abort();
  return 0;
}
