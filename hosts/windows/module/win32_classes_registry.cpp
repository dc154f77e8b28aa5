// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/module/win32_classes_registry.h"

#include "hosts/windows/values/unique_resource.h"
#include "hosts/windows/values/wide_text.h"

namespace pelora::windows {
namespace {

HRESULT StatusOf(LSTATUS error) { return HRESULT_FROM_WIN32(static_cast<DWORD>(error)); }

HRESULT StatusOfRemoval(LSTATUS error) {
  return error == ERROR_FILE_NOT_FOUND ? S_OK : StatusOf(error);
}

/// A value's name as the system takes it: none for the default value.
std::wstring ValueName(const std::optional<std::string>& name) { return ToWide(name.value_or("")); }

}  // namespace

HRESULT Win32ClassesRegistry::CreateKey(const std::string& path) {
  UniqueRegistryKey key;
  return StatusOf(RegCreateKeyExW(HKEY_CLASSES_ROOT, ToWide(path).c_str(), 0, nullptr,
                                  REG_OPTION_NON_VOLATILE, KEY_WRITE, nullptr, key.Put(), nullptr));
}

HRESULT Win32ClassesRegistry::SetValue(const std::string& path,
                                       const std::optional<std::string>& name,
                                       const std::string& value) {
  const std::wstring text = ToWide(value);
  UniqueRegistryKey key;
  const LSTATUS opened =
      RegOpenKeyExW(HKEY_CLASSES_ROOT, ToWide(path).c_str(), 0, KEY_SET_VALUE, key.Put());
  if (opened != ERROR_SUCCESS) return StatusOf(opened);
  return StatusOf(RegSetValueExW(key.Get(), ValueName(name).c_str(), 0, REG_SZ,
                                 reinterpret_cast<const BYTE*>(text.c_str()),
                                 static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))));
}

HRESULT Win32ClassesRegistry::DeleteValue(const std::string& path,
                                          const std::optional<std::string>& name) {
  UniqueRegistryKey key;
  const LSTATUS opened =
      RegOpenKeyExW(HKEY_CLASSES_ROOT, ToWide(path).c_str(), 0, KEY_SET_VALUE, key.Put());
  if (opened != ERROR_SUCCESS) return StatusOfRemoval(opened);
  return StatusOfRemoval(RegDeleteValueW(key.Get(), ValueName(name).c_str()));
}

HRESULT Win32ClassesRegistry::DeleteTree(const std::string& path) {
  return StatusOfRemoval(RegDeleteTreeW(HKEY_CLASSES_ROOT, ToWide(path).c_str()));
}

}  // namespace pelora::windows
