// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/provider/provider_variant.h"

#include <string>
#include <utility>
#include <vector>

#include "directory/utf.h"

namespace pelora::windows::test {
namespace {

constexpr LONG kLowerBound = 7;

SAFEARRAY* MakeArray(const std::vector<Variant>& values) {
  SAFEARRAYBOUND bound = {static_cast<ULONG>(values.size()), kLowerBound};
  SAFEARRAY* const array = SafeArrayCreate(VARENUM::VT_VARIANT, 1, &bound);
  LONG index = kLowerBound;
  for (const Variant& value : values) {
    VARIANT element = MakeSystemValue(value);
    // The array takes a copy.
    SafeArrayPutElement(array, &index, &element);
    VariantClear(&element);
    ++index;
  }
  return array;
}

SAFEARRAY* MakeBytes() { return SafeArrayCreateVector(VARENUM::VT_UI1, 0, 3); }

Variant ReadArray(SAFEARRAY* array) {
  LONG first = 0;
  LONG last = -1;
  if (FAILED(SafeArrayGetLBound(array, 1, &first)) || FAILED(SafeArrayGetUBound(array, 1, &last))) {
    return Variant::OtherType(VT_ARRAY);
  }
  std::vector<Variant> values;
  for (LONG index = first; index <= last; ++index) {
    VARIANT element;
    VariantInit(&element);
    if (FAILED(SafeArrayGetElement(array, &index, &element))) return Variant::OtherType(VT_ARRAY);
    values.push_back(ReadSystemValue(element));
    VariantClear(&element);
  }
  return Variant::Array(std::move(values));
}

}  // namespace

VARIANT MakeSystemValue(const Variant& value) {
  VARIANT made;
  VariantInit(&made);
  made.vt = value.type();
  if (value.type() == VT_I4) {
    made.lVal = value.integer();
  } else if (value.type() == VT_BSTR) {
    const std::u16string text = ToUtf16(value.string());
    made.bstrVal = SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()),
                                     static_cast<UINT>(text.size()));
  } else if (value.type() == kVariantArray) {
    made.parray = MakeArray(value.array());
  } else if (value.type() == (VT_ARRAY | VT_UI1)) {
    made.parray = MakeBytes();
  }
  return made;
}

Variant ReadSystemValue(const VARIANT& source) {
  switch (source.vt) {
    case VT_EMPTY:
      return {};
    case VT_I4:
      return Variant::Integer(source.lVal);
    case VT_BSTR:
      return Variant::String(ToUtf8(
          {reinterpret_cast<const char16_t*>(source.bstrVal), SysStringLen(source.bstrVal)}));
    case kVariantArray:
      return ReadArray(source.parray);
    default:
      return Variant::OtherType(source.vt);
  }
}

}  // namespace pelora::windows::test
