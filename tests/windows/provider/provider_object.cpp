// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/provider/provider_object.h"

#include <bit>

#include "directory/utf.h"
#include "tests/windows/provider/provider_variant.h"

namespace pelora::windows::test {
namespace {

std::string NameOf(BSTR name) {
  return ToUtf8({reinterpret_cast<const char16_t*>(name), SysStringLen(name)});
}

}  // namespace

void* ProviderObject::Find(REFIID iid) {
  if (IsEqualIID(iid, ::IID_IUnknown) || IsEqualIID(iid, ::IID_IDispatch) ||
      IsEqualIID(iid, ::IID_IADs) || IsEqualIID(iid, ::IID_IADsUser)) {
    return static_cast<::IADsUser*>(this);
  }
  if (IsEqualIID(iid, ::IID_IADsOU)) return static_cast<::IADsOU*>(this);
  if (IsEqualIID(iid, ::IID_IADsContainer)) return static_cast<::IADsContainer*>(this);
  return nullptr;
}

STDMETHODIMP ProviderObject::QueryInterface(REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (!IsEqualIID(iid, ::IID_IDispatch)) {
    Ref<pelora::IADs> offered;
    const HRESULT status =
        target_->QueryInterface(std::bit_cast<Guid>(iid), reinterpret_cast<void**>(offered.Put()));
    if (status != S_OK) return status;
  }
  *object = Find(iid);
  if (*object == nullptr) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

STDMETHODIMP_(ULONG) ProviderObject::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

STDMETHODIMP ProviderObject::Get(BSTR name, VARIANT* value) {
  if (value == nullptr) return E_POINTER;
  VariantInit(value);
  Variant read;
  const HRESULT status = target_->Get(NameOf(name), read);
  if (SUCCEEDED(status)) *value = MakeSystemValue(read);
  return status;
}

STDMETHODIMP ProviderObject::Put(BSTR name, VARIANT value) {
  return target_->Put(NameOf(name), ReadSystemValue(value));
}

STDMETHODIMP ProviderObject::PutEx(long control, BSTR name, VARIANT value) {
  return target_->PutEx(control, NameOf(name), ReadSystemValue(value));
}

STDMETHODIMP ProviderObject::SetInfo() { return target_->SetInfo(); }

}  // namespace pelora::windows::test
