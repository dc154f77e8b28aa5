// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "hosts/windows/system_headers.h"
#include "platform/unknown.h"

namespace pelora::windows::test {

/// The module under test, as it was built.
[[nodiscard]] std::wstring ExtensionPath();

/// Has the system's tool register the module, or undo it; its exit code is 0 on success.
[[nodiscard]] DWORD Register(const std::wstring& path = ExtensionPath());
[[nodiscard]] DWORD Unregister(const std::wstring& path = ExtensionPath());

/// Whether the registry leads to the module, as it was built.
[[nodiscard]] bool IsRegistered();

/// The module's answer to whether it can be unloaded; `E_UNEXPECTED` when it is not loaded.
[[nodiscard]] HRESULT CanUnloadNow();
[[nodiscard]] bool IsLoaded();
/// Has the component library unload whatever can be.
void UnloadUnused();

/// The class factory's or component's interface `Interface` of a class of the class table, through
/// the registry.
template <class Interface>
[[nodiscard]] HRESULT GetClassFactory(REFCLSID class_id, Ref<Interface>& factory) {
  return CoGetClassObject(class_id, CLSCTX_INPROC_SERVER, nullptr, __uuidof(Interface),
                          reinterpret_cast<void**>(factory.Put()));
}
template <class Interface>
[[nodiscard]] HRESULT Activate(REFCLSID class_id, Ref<Interface>& component) {
  return CoCreateInstance(class_id, nullptr, CLSCTX_INPROC_SERVER, __uuidof(Interface),
                          reinterpret_cast<void**>(component.Put()));
}

/// Identifier of a class of the class table.
[[nodiscard]] CLSID ClassId(std::string_view name);

/// Another interface of an object; none when it does not offer it.
template <class Interface>
[[nodiscard]] Ref<Interface> QueryFor(::IUnknown& object) {
  Ref<Interface> found;
  if (FAILED(object.QueryInterface(__uuidof(Interface), reinterpret_cast<void**>(found.Put())))) {
    return {};
  }
  return found;
}

}  // namespace pelora::windows::test
