// SPDX-License-Identifier: Apache-2.0
#include "directory/string_set.h"

#include <utility>
#include <vector>

namespace pelora {

HRESULT ReadStringSet(IADs& object, std::string_view attribute, StringSet& values) {
  Variant stored;
  const HRESULT status = object.Get(attribute, stored);
  StringSet read;
  if (status != E_ADS_PROPERTY_NOT_FOUND) {
    if (FAILED(status)) return status;
    if (stored.type() == VT_BSTR) read.insert(stored.string());
    if (stored.type() == kVariantArray) {
      for (const Variant& element : stored.array()) {
        if (element.type() != VT_BSTR) return E_ADS_CANT_CONVERT_DATATYPE;
        read.insert(element.string());
      }
    }
  }
  values = std::move(read);
  return S_OK;
}

HRESULT WriteStringSet(IADs& object, std::string_view attribute, const StringSet& values) {
  if (values.empty()) return object.PutEx(ADS_PROPERTY_CLEAR, attribute, Variant());
  if (values.size() == 1) return object.Put(attribute, Variant::String(*values.begin()));
  const std::vector<std::string> ascending(values.begin(), values.end());
  return object.Put(attribute, Variant::StringArray(ascending));
}

HRESULT StringSetContains(IADs& object, std::string_view attribute, const std::string& value,
                          bool& contains) {
  StringSet values;
  const HRESULT status = ReadStringSet(object, attribute, values);
  if (SUCCEEDED(status)) contains = values.contains(value);
  return status;
}

}  // namespace pelora
