// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/windows/com/com_object.h"
#include "server/class_table.h"

namespace pelora::windows {

/// Makes an object of a class and gives its interface; `*object` is null after any failure.
using CreateInstanceFunction = HRESULT (*)(const ModuleContext& context,
                                           const ComponentClass& component_class, REFIID iid,
                                           void** object);

/// Class factory of one class of the class table. Objects of another's are not aggregated.
class CComClassFactory : public CComObjectRootEx, public ::IClassFactory {
 public:
  using Interfaces = InterfaceList<::IClassFactory>;

  CComClassFactory(const ModuleContext& context, const ComponentClass& component_class,
                   CreateInstanceFunction create)
      : CComObjectRootEx(context), component_class_(component_class), create_(create) {}

  STDMETHODIMP CreateInstance(::IUnknown* outer, REFIID iid, void** object) override;
  STDMETHODIMP LockServer(BOOL lock) override;

 private:
  const ComponentClass& component_class_;
  CreateInstanceFunction create_;
};

}  // namespace pelora::windows
