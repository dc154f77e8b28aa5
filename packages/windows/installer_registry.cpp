// SPDX-License-Identifier: Apache-2.0
#include "packages/windows/installer_registry.h"

#include <algorithm>
#include <map>
#include <optional>

#include "directory/ascii_case.h"
#include "server/guid_text.h"
#include "server/module_identity.h"
#include "server/pelora_prop_module.h"
#include "server/registration_ports.h"

namespace pelora::packages {
namespace {

/// The installer puts in the module's path, by the name of its file in the installer's source.
constexpr const char* kModulePath = "[#PeloraADS.DLL]";
/// The folder's own property would end in a backslash, and registration writes none.
constexpr const char* kModuleFolder = "[ProgramFiles64Folder]Pelora";

struct KeyLess {
  bool operator()(const std::string& left, const std::string& right) const {
    return std::ranges::lexicographical_compare(left, right, {}, AsciiLowerCase, AsciiLowerCase);
  }
};

using Values = std::map<std::string, std::string, KeyLess>;

/// A registry in memory; it keeps the keys that were asked for, not those above them.
class RecordedRegistry final : public IClassesRegistry {
 public:
  [[nodiscard]] HRESULT CreateKey(const std::string& path) override {
    keys_.try_emplace(path);
    return S_OK;
  }
  [[nodiscard]] HRESULT SetValue(const std::string& path, const std::optional<std::string>& name,
                                 const std::string& value) override {
    keys_[path][name.value_or("")] = value;
    return S_OK;
  }
  [[nodiscard]] HRESULT DeleteValue(const std::string& path,
                                    const std::optional<std::string>& name) override {
    keys_[path].erase(name.value_or(""));
    return S_OK;
  }
  [[nodiscard]] HRESULT DeleteTree(const std::string& path) override {
    std::erase_if(keys_, [&](const auto& key) {
      return EqualsWithoutCase(key.first.substr(0, path.size()), path) &&
             (key.first.size() == path.size() || key.first[path.size()] == '\\');
    });
    return S_OK;
  }

  [[nodiscard]] const std::map<std::string, Values, KeyLess>& keys() const { return keys_; }

  /// Whether another key lies below a key.
  [[nodiscard]] bool HasKeyBelow(const std::string& path) const {
    return std::ranges::any_of(keys_, [&](const auto& key) {
      return key.first.size() > path.size() && key.first[path.size()] == '\\' &&
             EqualsWithoutCase(key.first.substr(0, path.size()), path);
    });
  }

 private:
  std::map<std::string, Values, KeyLess> keys_;
};

class NoLocale final : public IThreadLocale {
 public:
  [[nodiscard]] LocaleId Get() const override { return kSystemDefaultLocale; }
  void Set(LocaleId /*locale*/) override {}
};

/// The module as it will lie where it is installed.
class InstalledModule final : public IModuleFile {
 public:
  InstalledModule(const ScriptReader& read_script, IClassesRegistry& registry)
      : read_script_(read_script), registry_(registry) {}

  [[nodiscard]] std::string Path() const override { return kModulePath; }
  [[nodiscard]] HRESULT ReadScript(std::uint16_t resource, std::string& text) const override {
    return read_script_(resource, text);
  }
  /// What the system enters for a library without interfaces.
  [[nodiscard]] HRESULT RegisterTypeLibrary() const override {
    const std::string version = "TypeLib\\" + GuidText(kTypeLibraryId) + "\\" +
                                std::to_string(kTypeLibraryMajorVersion) + "." +
                                std::to_string(kTypeLibraryMinorVersion);
    const std::pair<std::string, std::string> entries[] = {
        {"", "PeloraProp 1.0 Type Library"},
        {"\\0\\win64", kModulePath},
        {"\\FLAGS", "0"},
        {"\\HELPDIR", kModuleFolder},
    };
    for (const auto& [key, text] : entries) {
      const HRESULT status = registry_.SetValue(version + key, std::nullopt, text);
      if (FAILED(status)) return status;
    }
    return S_OK;
  }
  [[nodiscard]] HRESULT UnregisterTypeLibrary() const override { return S_OK; }

 private:
  const ScriptReader& read_script_;
  IClassesRegistry& registry_;
};

std::string Escaped(const std::string& text) {
  std::string escaped;
  for (const char letter : text) {
    switch (letter) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        escaped += letter;
    }
  }
  return escaped;
}

std::string Element(const std::string& key, const std::string& name, const std::string& value) {
  const std::string named = name.empty() ? "" : " Name=\"" + Escaped(name) + "\"";
  return "  <RegistryValue Root=\"HKCR\" Key=\"" + Escaped(key) + "\"" + named +
         " Type=\"string\" Value=\"" + Escaped(value) + "\"/>\n";
}

}  // namespace

std::string InstallerRegistry(const ScriptReader& read_script) {
  RecordedRegistry registry;
  NoLocale locale;
  InstalledModule module_file(read_script, registry);
  const CPeloraPropModule module({registry, locale, module_file});
  if (FAILED(module.RegisterServer())) return {};

  std::string source =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<!-- What the module's own registration leaves in the registry. Made by the build. -->\n"
      "<Include>\n";
  for (const auto& [key, values] : registry.keys()) {
    for (const auto& [name, value] : values) source += Element(key, name, value);
    // A key of its own without a value: made when installed, taken away when removed.
    if (values.empty() && !registry.HasKeyBelow(key)) source += Element(key, "*", "");
  }
  return source + "</Include>\n";
}

}  // namespace pelora::packages
