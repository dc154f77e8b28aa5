// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/support/class_object.h"

#include <stdexcept>

namespace pelora::windows::test {

ClassObject::ClassObject(const CLSID& class_id, ::IUnknown& instance) : instance_(instance) {
  const HRESULT status = CoRegisterClassObject(class_id, this, CLSCTX_INPROC_SERVER,
                                               REGCLS_MULTIPLEUSE, &registration_);
  if (FAILED(status)) throw std::runtime_error("the class object cannot be registered");
}

ClassObject::~ClassObject() { CoRevokeClassObject(registration_); }

STDMETHODIMP ClassObject::QueryInterface(REFIID iid, void** object) {
  const bool offered = IsEqualIID(iid, ::IID_IUnknown) || IsEqualIID(iid, ::IID_IClassFactory);
  *object = offered ? this : nullptr;
  return offered ? S_OK : E_NOINTERFACE;
}

STDMETHODIMP ClassObject::CreateInstance(::IUnknown* outer, REFIID iid, void** object) {
  *object = nullptr;
  ++activations_;
  if (FAILED(status_)) return status_;
  return outer == nullptr ? instance_.QueryInterface(iid, object) : CLASS_E_NOAGGREGATION;
}

}  // namespace pelora::windows::test
