// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/module/module_path.h"

namespace pelora::windows {

std::wstring ModulePath(HINSTANCE instance) {
  std::wstring path(MAX_PATH, L'\0');
  while (true) {
    const DWORD length = GetModuleFileNameW(instance, path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) {
      path.resize(length);
      return path;
    }
    path.resize(path.size() * 2);
  }
}

}  // namespace pelora::windows
