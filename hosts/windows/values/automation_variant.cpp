// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/values/automation_variant.h"

#include <new>
#include <utility>
#include <vector>

#include "hosts/windows/values/bstr.h"

namespace pelora::windows {
namespace {

/// The elements of an array of variants, where they lie, for as long as it lives.
class LockedElements {
 public:
  explicit LockedElements(SAFEARRAY* array) : array_(array) {
    void* data = nullptr;
    status_ = SafeArrayAccessData(array, &data);
    if (SUCCEEDED(status_)) elements_ = static_cast<VARIANT*>(data);
  }
  ~LockedElements() {
    if (SUCCEEDED(status_)) SafeArrayUnaccessData(array_);
  }
  LockedElements(const LockedElements&) = delete;
  LockedElements& operator=(const LockedElements&) = delete;

  [[nodiscard]] HRESULT status() const { return status_; }
  [[nodiscard]] VARIANT* elements() const { return elements_; }

 private:
  SAFEARRAY* array_;
  VARIANT* elements_ = nullptr;
  HRESULT status_;
};

HRESULT ReadArray(SAFEARRAY* array, Variant& value) {
  std::vector<Variant> elements;
  if (array != nullptr) {
    if (SafeArrayGetDim(array) != 1) return E_ADS_CANT_CONVERT_DATATYPE;
    const LockedElements locked(array);
    if (FAILED(locked.status())) return locked.status();
    // The data begins with the element of the lower bound, whatever number that has.
    const std::size_t count = array->rgsabound[0].cElements;
    elements.resize(count);
    for (std::size_t index = 0; index < count; ++index) {
      const HRESULT status = FromSystem(locked.elements()[index], elements[index]);
      if (FAILED(status)) return status;
    }
  }
  value = Variant::Array(std::move(elements));
  return S_OK;
}

HRESULT WriteArray(const std::vector<Variant>& values, UniqueVariant& result) {
  UniqueSafeArray array(
      SafeArrayCreateVector(VARENUM::VT_VARIANT, 0, static_cast<ULONG>(values.size())));
  if (!array) throw std::bad_alloc();
  {
    const LockedElements locked(array.Get());
    if (FAILED(locked.status())) return locked.status();
    for (std::size_t index = 0; index < values.size(); ++index) {
      UniqueVariant element;
      const HRESULT status = ToSystem(values[index], element);
      if (FAILED(status)) return status;
      locked.elements()[index] = element.Detach();
    }
  }
  VARIANT* const target = result.Put();
  target->vt = kVariantArray;
  target->parray = array.Detach();
  return S_OK;
}

}  // namespace

HRESULT FromSystem(const VARIANT& source, Variant& value) {
  value = {};
  switch (source.vt) {
    case VT_EMPTY:
      return S_OK;
    case VT_I4:
      value = Variant::Integer(source.lVal);
      return S_OK;
    case VT_BSTR:
      value = Variant::String(TextOf(source.bstrVal));
      return S_OK;
    case kVariantArray:
      return ReadArray(source.parray, value);
    default:
      value = Variant::OtherType(source.vt);
      return S_OK;
  }
}

HRESULT ToSystem(const Variant& value, UniqueVariant& result) {
  VARIANT* const target = result.Put();
  switch (value.type()) {
    case VT_EMPTY:
      return S_OK;
    case VT_I4:
      target->lVal = value.integer();
      break;
    case VT_BSTR:
      target->bstrVal = MakeBstr(value.string()).Detach();
      break;
    case kVariantArray:
      return WriteArray(value.array(), result);
    default:
      return E_ADS_CANT_CONVERT_DATATYPE;
  }
  target->vt = value.type();
  return S_OK;
}

}  // namespace pelora::windows
