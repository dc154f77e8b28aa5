// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "hosts/windows/system_headers.h"
#include "tests/windows/extension/registry_snapshot.h"

namespace pelora::windows::test {

/// The installer as it was built, and the same under a higher version.
[[nodiscard]] std::wstring InstallerPath();
[[nodiscard]] std::wstring NewerInstallerPath();

/// Runs the system's installer without windows. `action` is its option (`/i`, `/f`, `/x`, `/a`);
/// the exit code is the installer's.
[[nodiscard]] DWORD RunInstaller(const std::wstring& action, const std::wstring& package,
                                 const std::wstring& properties = {});

/// Where the installer puts things.
[[nodiscard]] std::wstring InstalledFolder();
[[nodiscard]] std::wstring InstalledModule();

[[nodiscard]] bool Exists(const std::wstring& path);

/// The entries of a snapshot but those in which the system keeps its list of installed products.
[[nodiscard]] Snapshot WithoutInstallersOwn(const Snapshot& entries);

/// What the list of installed programs says of ours, one key for each that is installed.
[[nodiscard]] Snapshot ProgramEntries(const Snapshot& entries);

}  // namespace pelora::windows::test
