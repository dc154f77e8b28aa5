// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/new_store_object.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "hosts/ldap/attribute_value.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/wipe.h"

namespace pelora::ldap {
namespace {

bool Holds(const AttributeValues& values, const std::string& wanted) {
  return std::find(values.begin(), values.end(), wanted) != values.end();
}

}  // namespace

NewStoreObject::NewStoreObject(IDirectoryStore& store, std::string dn,
                               const std::string& object_class,
                               std::shared_ptr<StoreStatus> last_failure)
    : store_(store),
      dn_(std::move(dn)),
      last_failure_(std::move(last_failure)),
      object_(Ref<StoreObject>::Adopt(new StoreObject(
          store_, {.dn = dn_, .is_root = false, .classes = {object_class}}, last_failure_))),
      staged_{{"objectClass", {object_class}}} {}

HRESULT NewStoreObject::QueryInterface(const Guid& iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  void* offered = nullptr;
  if (const HRESULT status = object_->QueryInterface(iid, &offered); FAILED(status)) return status;
  object_->Release();
  AddRef();
  *object = static_cast<IADs*>(this);
  return S_OK;
}

HRESULT NewStoreObject::Get(std::string_view name, Variant& value) {
  if (is_committed_) return object_->Get(name, value);
  value = {};
  const auto staged = staged_.find(name);
  if (staged == staged_.end()) return E_ADS_PROPERTY_NOT_FOUND;
  const std::optional<AttributeType> type = store_.schema().Find(name);
  return DecodeValues(type ? type->syntax : Syntax::kString, staged->second, value);
}

HRESULT NewStoreObject::Encode(std::string_view name, const Variant& value,
                               AttributeValues& values) const {
  const std::optional<AttributeType> type = store_.schema().Find(name);
  return type ? EncodeValues(type->syntax, value, values) : E_ADS_CANT_CONVERT_DATATYPE;
}

HRESULT NewStoreObject::Put(std::string_view name, const Variant& value) {
  if (is_committed_) return object_->Put(name, value);
  AttributeValues values;
  if (const HRESULT status = Encode(name, value, values); FAILED(status)) return status;
  // A new object has no attribute to remove.
  if (values.empty()) {
    staged_.erase(std::string(name));
  } else {
    staged_.insert_or_assign(std::string(name), std::move(values));
  }
  return S_OK;
}

HRESULT NewStoreObject::PutEx(std::int32_t control, std::string_view name, const Variant& value) {
  if (is_committed_) return object_->PutEx(control, name, value);
  if (control == ADS_PROPERTY_CLEAR) return Put(name, Variant::Array({}));
  if (control == ADS_PROPERTY_UPDATE) return Put(name, value);
  if (control != ADS_PROPERTY_APPEND && control != ADS_PROPERTY_DELETE) return E_ADS_BAD_PARAMETER;
  AttributeValues given;
  if (const HRESULT status = Encode(name, value, given); FAILED(status)) return status;
  if (given.empty()) return E_ADS_BAD_PARAMETER;
  AttributeValues& values = staged_[std::string(name)];
  if (control == ADS_PROPERTY_DELETE) {
    std::erase_if(values, [&](const std::string& held) { return Holds(given, held); });
  } else {
    for (std::string& added : given) {
      if (!Holds(values, added)) values.push_back(std::move(added));
    }
  }
  if (values.empty()) staged_.erase(std::string(name));
  return S_OK;
}

HRESULT NewStoreObject::PutBytes(std::string_view name, std::string bytes) {
  if (is_committed_) return E_UNEXPECTED;
  AttributeValues& values = staged_[std::string(name)];
  values.clear();
  // No list of values: it would be copied.
  values.push_back(std::move(bytes));
  secret_.emplace_back(name);
  return S_OK;
}

NewStoreObject::~NewStoreObject() { WipeSecrets(staged_); }

void NewStoreObject::WipeSecrets(AttributeMap& attributes) const {
  for (const std::string& name : secret_) {
    const auto found = attributes.find(name);
    if (found == attributes.end()) continue;
    for (std::string& value : found->second) Wipe(value);
  }
}

HRESULT NewStoreObject::SetInfo() {
  if (is_committed_) return object_->SetInfo();
  Entry entry{.dn = dn_, .attributes = staged_};
  StoreStatus added = store_.Add(entry);
  WipeSecrets(entry.attributes);
  if (!added.Ok()) {
    *last_failure_ = std::move(added);
    return HresultOfLdap(last_failure_->code);
  }
  is_committed_ = true;
  WipeSecrets(staged_);
  staged_.clear();
  return S_OK;
}

}  // namespace pelora::ldap
