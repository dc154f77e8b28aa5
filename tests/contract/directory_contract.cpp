// SPDX-License-Identifier: Apache-2.0
#include "tests/contract/directory_contract.h"

#include <algorithm>

#include "tests/support/variant_text.h"

namespace pelora::contract {

std::string DirectoryContract::DnOf(const std::string& rdn) const {
  return rdn + ',' + directory_->Container();
}

std::string DirectoryContract::PathOf(const std::string& rdn) const {
  return directory_->PathPrefix() + DnOf(rdn);
}

void DirectoryContract::AddUser(const std::string& rdn, const StoredAttributes& attributes) {
  directory_->Add(ObjectKind::kUser, DnOf(rdn), attributes);
}

void DirectoryContract::SetOnUser(const std::string& attribute,
                                  const std::vector<std::string>& values) {
  directory_->Set(DnOf(kUser), attribute, values);
}

std::vector<std::string> DirectoryContract::StoredOnUser(const std::string& attribute) {
  std::vector<std::string> values = directory_->Stored(DnOf(kUser))[attribute];
  std::sort(values.begin(), values.end());
  return values;
}

Ref<IADs> DirectoryContract::Bind(const std::string& rdn, const Guid& iid) {
  Ref<IADs> object;
  EXPECT_EQ(Service().ADsGetObject(PathOf(rdn), iid, object), S_OK) << PathOf(rdn);
  return object;
}

Ref<IADs> DirectoryContract::BindUserWith(const StoredAttributes& attributes) {
  AddUser(kUser, attributes);
  return Bind(kUser);
}

Variant ValueOf(IADs& object, const std::string& name) {
  Variant value;
  EXPECT_EQ(object.Get(name, value), S_OK) << name;
  return value;
}

std::vector<std::string> StringsOf(const Variant& value) {
  std::vector<std::string> strings;
  const bool is_array = value.type() == kVariantArray;
  for (const Variant& element : is_array ? value.array() : std::vector<Variant>{value}) {
    EXPECT_EQ(element.type(), VT_BSTR) << ToText(value);
    if (element.type() == VT_BSTR) strings.push_back(element.string());
  }
  std::sort(strings.begin(), strings.end());
  return strings;
}

}  // namespace pelora::contract
