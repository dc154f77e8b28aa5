// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/adsi/ads_object.h"

#include "hosts/windows/adsi/unreachable.h"
#include "hosts/windows/guarded.h"
#include "hosts/windows/values/automation_variant.h"
#include "hosts/windows/values/bstr.h"
#include "hosts/windows/values/system_guid.h"

namespace pelora::windows {

HRESULT AdsObject::Wrap(::IUnknown& bound, Ref<pelora::IADs>& object) {
  object.Reset();
  Ref<::IADs> system_object;
  const HRESULT status =
      bound.QueryInterface(::IID_IADs, reinterpret_cast<void**>(system_object.Put()));
  if (FAILED(status)) return status;
  if (!system_object) return E_NOINTERFACE;
  object = Ref<pelora::IADs>::Adopt(new AdsObject(std::move(system_object)));
  return S_OK;
}

HRESULT AdsObject::FillCache(::IUnknown& bound) {
  Ref<::IADs> object;
  const HRESULT offered = bound.QueryInterface(::IID_IADs, reinterpret_cast<void**>(object.Put()));
  if (FAILED(offered)) return offered;
  if (!object) return E_NOINTERFACE;
  const HRESULT status = object->GetInfo();
  return SaysUnreachable(status) ? status : S_OK;
}

HRESULT AdsObject::QueryInterface(const Guid& iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  // The system's object knows what it offers; all of it is reached through this one.
  Ref<::IUnknown> offered;
  const HRESULT status =
      object_->QueryInterface(ToSystem(iid), reinterpret_cast<void**>(offered.Put()));
  if (status != S_OK) return status;
  AddRef();
  *object = static_cast<pelora::IADs*>(this);
  return S_OK;
}

HRESULT AdsObject::Get(std::string_view name, Variant& value) {
  value = {};
  return Guarded([&] {
    UniqueVariant read;
    const HRESULT status = object_->Get(MakeBstr(name).Get(), read.Put());
    if (FAILED(status)) return status;
    const HRESULT converted = FromSystem(read.Get(), value);
    return FAILED(converted) ? converted : status;
  });
}

HRESULT AdsObject::Put(std::string_view name, const Variant& value) {
  return Guarded([&] {
    UniqueVariant written;
    const HRESULT status = ToSystem(value, written);
    return FAILED(status) ? status : object_->Put(MakeBstr(name).Get(), written.Get());
  });
}

HRESULT AdsObject::PutEx(std::int32_t control, std::string_view name, const Variant& value) {
  return Guarded([&] {
    UniqueVariant written;
    const HRESULT status = ToSystem(value, written);
    return FAILED(status) ? status : object_->PutEx(control, MakeBstr(name).Get(), written.Get());
  });
}

HRESULT AdsObject::SetInfo() {
  return Guarded([&] { return object_->SetInfo(); });
}

}  // namespace pelora::windows
