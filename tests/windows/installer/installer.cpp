// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/installer/installer.h"

#include <array>
#include <string_view>

#include "tests/windows/support/extension_module.h"
#include "tests/windows/support/run_program.h"

namespace pelora::windows::test {
namespace {

constexpr std::string_view kUninstall =
    "HKLM\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\";
constexpr auto kInstallersOwn = std::to_array<std::string_view>({
    "Installer",
    "HKLM\\Software\\Microsoft\\Windows\\CurrentVersion\\Installer",
    kUninstall,
});

bool BeginsWith(std::string_view path, std::string_view prefix) {
  const pelora::testing::NoCaseLess less;
  const std::string_view begin = path.substr(0, prefix.size());
  return !less(begin, prefix) && !less(prefix, begin);
}

std::wstring BuildFolder() {
  const std::wstring module = ExtensionPath();
  return module.substr(0, module.find_last_of(L'\\') + 1);
}

}  // namespace

std::wstring InstallerPath() { return BuildFolder() + L"PeloraADS.msi"; }

std::wstring NewerInstallerPath() { return BuildFolder() + L"bin\\newer.msi"; }

DWORD RunInstaller(const std::wstring& action, const std::wstring& package,
                   const std::wstring& properties) {
  return RunProgram(L"msiexec " + action + L" \"" + package + L"\" /qn " + properties);
}

std::wstring InstalledFolder() { return L"C:\\Program Files\\Pelora"; }

std::wstring InstalledModule() { return InstalledFolder() + L"\\PeloraADS.DLL"; }

bool Exists(const std::wstring& path) {
  return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

Snapshot WithoutInstallersOwn(const Snapshot& entries) {
  Snapshot kept;
  for (const auto& [path, values] : entries) {
    bool is_own = false;
    for (const std::string_view prefix : kInstallersOwn) is_own |= BeginsWith(path, prefix);
    if (!is_own) kept[path] = values;
  }
  return kept;
}

Snapshot ProgramEntries(const Snapshot& entries) {
  Snapshot programs;
  for (const auto& [path, values] : entries) {
    const auto name = values.find("DisplayName");
    if (BeginsWith(path, kUninstall) && name != values.end() &&
        name->second == "Pelora administration") {
      programs[path] = values;
    }
  }
  return programs;
}

}  // namespace pelora::windows::test
