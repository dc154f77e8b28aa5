// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/store_object.h"

#include <algorithm>
#include <array>
#include <utility>

#include "directory/ascii_case.h"
#include "hosts/ldap/attribute_value.h"
#include "hosts/ldap/bound_attributes.h"
#include "hosts/ldap/ldap_status.h"

namespace pelora::ldap {
namespace {

using Operation = Modification::Operation;

struct ClassInterface {
  Guid iid;
  std::string_view object_class;
};

constexpr auto kClassInterfaces = std::to_array<ClassInterface>({
    {IID_IADsUser, "user"},
    {IID_IADsOU, "organizationalUnit"},
    {IID_IADsContainer, "organizationalUnit"},
    {IID_IADsContainer, "container"},
    {IID_IADsContainer, "domainDNS"},
    {IID_IADsContainer, "builtinDomain"},
});

bool Offers(const AttributeValues& classes, const Guid& iid) {
  if (iid == IID_IUnknown || iid == IID_IADs) return true;
  for (const ClassInterface& row : kClassInterfaces) {
    const auto is_class = [&](const std::string& name) {
      return EqualsWithoutCase(name, row.object_class);
    };
    if (row.iid == iid && std::any_of(classes.begin(), classes.end(), is_class)) return true;
  }
  return false;
}

}  // namespace

bool BindingOptions::Covers(std::string_view attribute) const {
  return attributes.empty() || EqualsWithoutCase(attribute, "objectClass") ||
         std::ranges::any_of(attributes, [&](const std::string& name) {
           return EqualsWithoutCase(name, attribute);
         });
}

StoreObject::StoreObject(IDirectoryStore& store, Identity identity,
                         std::shared_ptr<StoreStatus> last_failure, Options options)
    : store_(store),
      identity_(std::move(identity)),
      last_failure_(std::move(last_failure)),
      options_(std::move(options)) {}

StoreObject::StoreObject(IDirectoryStore& store, Identity identity,
                         std::shared_ptr<StoreStatus> last_failure, AttributeMap attributes,
                         Options options)
    : StoreObject(store, std::move(identity), std::move(last_failure), std::move(options)) {
  cache_ = std::move(attributes);
  is_filled_ = true;
}

StoreObject::~StoreObject() {
  if (options_->witness != nullptr) options_->witness->OnReleased();
}

HRESULT StoreObject::QueryInterface(const Guid& iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (!Offers(identity_.classes, iid)) return E_NOINTERFACE;
  AddRef();
  *object = static_cast<IADs*>(this);
  return S_OK;
}

HRESULT StoreObject::Get(std::string_view name, Variant& value) {
  value = {};
  const AttributeValues* values = nullptr;
  if (const Modification* const staged = FindStaged(name); staged != nullptr) {
    values = &staged->values;
  } else {
    auto cached = cache_.find(name);
    if (cached == cache_.end() || outdated_.contains(name)) {
      const HRESULT read = Provide(name);
      if (FAILED(read)) return read;
      cached = cache_.find(name);
    }
    if (cached != cache_.end()) values = &cached->second;
    if (options_->witness != nullptr) {
      const AttributeValues none;
      options_->witness->OnTold(identity_.dn, name, values == nullptr ? none : *values);
    }
  }
  if (values == nullptr || values->empty()) return E_ADS_PROPERTY_NOT_FOUND;

  const std::optional<AttributeType> type = store_.schema().Find(name);
  if (!type && !identity_.is_root) return NotInSchema(name);
  return DecodeValues(type ? type->syntax : Syntax::kString, *values, value);
}

HRESULT StoreObject::Put(std::string_view name, const Variant& value) {
  return Stage(Operation::kReplace, name, value);
}

HRESULT StoreObject::PutEx(std::int32_t control, std::string_view name, const Variant& value) {
  // An add or a delete without values would mean something else to a server.
  const bool has_values = value.type() == kVariantArray && !value.array().empty();
  switch (control) {
    case ADS_PROPERTY_CLEAR:
      return Stage(Operation::kReplace, name, Variant::Array({}));
    case ADS_PROPERTY_UPDATE:
      return Stage(Operation::kReplace, name, value);
    case ADS_PROPERTY_APPEND:
      return has_values ? Stage(Operation::kAdd, name, value) : E_ADS_BAD_PARAMETER;
    case ADS_PROPERTY_DELETE:
      return has_values ? Stage(Operation::kDelete, name, value) : E_ADS_BAD_PARAMETER;
    default:
      return E_ADS_BAD_PARAMETER;
  }
}

HRESULT StoreObject::SetInfo() {
  if (staged_.empty()) return S_OK;
  // The root entry describes the directory; there is nothing of it to change.
  StoreStatus sent = identity_.is_root
                         ? StoreStatus{kLdapUnwillingToPerform, "the root entry is read-only"}
                         : store_.Modify(identity_.dn, staged_);
  const HRESULT status = Answer(std::move(sent));
  if (SUCCEEDED(status)) SettleCache();
  return status;
}

Modification* StoreObject::FindStaged(std::string_view name) {
  const auto found = std::find_if(staged_.begin(), staged_.end(), [&](const Modification& change) {
    return EqualsWithoutCase(change.attribute, name);
  });
  return found == staged_.end() ? nullptr : &*found;
}

HRESULT StoreObject::Stage(Operation operation, std::string_view name, const Variant& value) {
  const std::optional<AttributeType> type = store_.schema().Find(name);
  if (!type) return NotInSchema(name);
  Modification change{.operation = operation, .attribute = std::string(name), .values = {}};
  const HRESULT encoded = EncodeValues(type->syntax, value, change.values);
  if (FAILED(encoded)) return encoded;
  if (Modification* const staged = FindStaged(name); staged != nullptr) {
    *staged = std::move(change);
  } else {
    staged_.push_back(std::move(change));
  }
  return S_OK;
}

StoreStatus StoreObject::ReadEntry(std::vector<std::string> attributes, Entry& entry) {
  if (identity_.is_root) return store_.ReadRoot(entry);
  return store_.Read(identity_.dn, attributes, entry);
}

HRESULT StoreObject::Provide(std::string_view name) {
  if (outdated_.contains(name)) return Refresh(name);
  if (cache_.contains(name) || asked_.contains(name)) return S_OK;
  return identity_.is_root || options_->Covers(name) ? FillCache() : Refresh(name);
}

HRESULT StoreObject::FillCache() {
  if (is_filled_) return S_OK;
  Entry entry;
  const HRESULT status = Answer(ReadEntry(options_->attributes, entry));
  if (FAILED(status)) return status;
  // Names that are cached already, sent by an earlier commit, stay as they are.
  cache_.merge(entry.attributes);
  is_filled_ = true;
  return S_OK;
}

HRESULT StoreObject::Refresh(std::string_view name) {
  Entry entry;
  const std::string attribute(name);
  const HRESULT status = Answer(ReadEntry({attribute}, entry));
  if (FAILED(status)) return status;
  cache_.erase(attribute);
  cache_.merge(entry.attributes);
  outdated_.erase(attribute);
  asked_.insert(attribute);
  return S_OK;
}

void StoreObject::SettleCache() {
  for (Modification& sent : staged_) {
    cache_.erase(sent.attribute);
    outdated_.erase(sent.attribute);
    if (sent.operation == Operation::kReplace) {
      cache_.emplace(std::move(sent.attribute), std::move(sent.values));
    } else {
      outdated_.insert(std::move(sent.attribute));
    }
  }
  staged_.clear();
}

HRESULT StoreObject::NotInSchema(std::string_view name) {
  std::string text =
      "the directory's schema does not know the attribute '" + std::string(name) + "'";
  if (IsBoundAttribute(name)) text += ": extend it with \"pelora-deploy schema\"";
  *last_failure_ = {kLdapUndefinedType, std::move(text)};
  return E_ADS_CANT_CONVERT_DATATYPE;
}

HRESULT StoreObject::Answer(StoreStatus status) {
  if (status.Ok()) return S_OK;
  const HRESULT answer = HresultOfLdap(status.code);
  *last_failure_ = std::move(status);
  return answer;
}

}  // namespace pelora::ldap
