// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/com/class_factory.h"

#include "hosts/windows/guarded.h"

namespace pelora::windows {

STDMETHODIMP CComClassFactory::CreateInstance(::IUnknown* outer, REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (outer != nullptr) return CLASS_E_NOAGGREGATION;
  return Guarded([&] { return create_(context(), component_class_, iid, object); });
}

STDMETHODIMP CComClassFactory::LockServer(BOOL lock) {
  if (lock != FALSE) {
    context().module.Lock();
  } else {
    context().module.Unlock();
  }
  return S_OK;
}

}  // namespace pelora::windows
