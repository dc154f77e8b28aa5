// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/support/extension_module.h"

#include "hosts/windows/module/module_path.h"
#include "hosts/windows/values/system_guid.h"
#include "hosts/windows/values/wide_text.h"
#include "server/class_table.h"
#include "server/guid_text.h"
#include "tests/windows/support/run_program.h"

namespace pelora::windows::test {
namespace {

constexpr const wchar_t* kModule = L"PeloraADS.DLL";

}  // namespace

std::wstring ExtensionPath() {
  // The programs lie in a folder of their own beside the module.
  const std::wstring program = ModulePath(nullptr);
  const std::wstring folder = program.substr(0, program.find_last_of(L'\\'));
  return folder.substr(0, folder.find_last_of(L'\\') + 1) + kModule;
}

DWORD Register(const std::wstring& path) { return RunProgram(L"regsvr32 /s \"" + path + L"\""); }

DWORD Unregister(const std::wstring& path) {
  return RunProgram(L"regsvr32 /s /u \"" + path + L"\"");
}

bool IsRegistered() {
  const std::wstring key =
      L"CLSID\\" + ToWide(GuidText(ClassTable().back().class_id)) + L"\\InprocServer32";
  std::wstring path(MAX_PATH, L'\0');
  auto size = static_cast<DWORD>(path.size() * sizeof(wchar_t));
  return RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, path.data(),
                      &size) == ERROR_SUCCESS &&
         ExtensionPath() == path.c_str();
}

HRESULT CanUnloadNow() {
  const HMODULE module = GetModuleHandleW(kModule);
  if (module == nullptr) return E_UNEXPECTED;
  const auto can_unload = reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(
      reinterpret_cast<void*>(GetProcAddress(module, "DllCanUnloadNow")));
  return can_unload == nullptr ? E_UNEXPECTED : can_unload();
}

bool IsLoaded() { return GetModuleHandleW(kModule) != nullptr; }

void UnloadUnused() { CoFreeUnusedLibrariesEx(0, 0); }

CLSID ClassId(std::string_view name) { return ToSystem(FindClass(name)->class_id); }

}  // namespace pelora::windows::test
