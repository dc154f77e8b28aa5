// SPDX-License-Identifier: Apache-2.0
// The functions that the module exports.
#include <optional>

#include "hosts/windows/guarded.h"
#include "hosts/windows/module/dll_module.h"

namespace {

using pelora::windows::DllModule;
using pelora::windows::Guarded;

/// The one object that is reached without being handed on: the system calls the functions below
/// with nothing to find it by. It stands from the library's loading to its unloading.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
constinit std::optional<DllModule> loaded_module;

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID /*reserved*/) {
  if (reason != DLL_PROCESS_ATTACH) return TRUE;
  const HRESULT status = Guarded([&] {
    loaded_module.emplace(instance);
    return S_OK;
  });
  return SUCCEEDED(status) ? TRUE : FALSE;
}

STDAPI DllGetClassObject(REFCLSID class_id, REFIID iid, void** factory) {
  return Guarded([&] { return loaded_module->GetClassObject(class_id, iid, factory); });
}

STDAPI DllCanUnloadNow() { return loaded_module->module().CanUnloadNow(); }

STDAPI DllRegisterServer() {
  return Guarded([] { return loaded_module->module().RegisterServer(); });
}

STDAPI DllUnregisterServer() {
  return Guarded([] { return loaded_module->module().UnregisterServer(); });
}
