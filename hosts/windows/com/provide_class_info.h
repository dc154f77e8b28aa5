// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <ocidl.h>

#include "hosts/windows/com/module_context.h"
#include "hosts/windows/guarded.h"

namespace pelora::windows {

/// What the type library built into a module says of a class. `*info` is null after any failure.
[[nodiscard]] HRESULT ReadClassInfo(HINSTANCE instance, REFCLSID class_id, ITypeInfo** info);

/// Tells a script host or object browser what class an object is of. `Shell` is a component class
/// (`CComCoClass`) and an object (`CComObjectRootEx`).
template <class Shell>
class IProvideClassInfoImpl : public ::IProvideClassInfo {
 public:
  STDMETHODIMP GetClassInfo(ITypeInfo** info) override {
    if (info == nullptr) return E_POINTER;
    *info = nullptr;
    const auto& shell = static_cast<const Shell&>(*this);
    return Guarded(
        [&] { return ReadClassInfo(shell.context().instance, shell.GetObjectClsid(), info); });
  }

 protected:
  ~IProvideClassInfoImpl() = default;
};

}  // namespace pelora::windows
