// SPDX-License-Identifier: Apache-2.0
#include "tests/support/fake_directory_object.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

namespace pelora::testing {
namespace {

constexpr auto kConstraintViolation = static_cast<HRESULT>(0x8007202FU);
constexpr auto kInvalidSyntax = static_cast<HRESULT>(0x8007200BU);

std::vector<Variant> ValuesOf(const Variant& value) {
  if (value.IsEmpty()) return {};
  if (value.type() == kVariantArray) return value.array();
  return {value};
}

/// One value is bare, several are an array, whatever the schema says.
Variant ShapeOf(const std::vector<Variant>& values) {
  if (values.empty()) return {};
  return values.size() == 1 ? values.front() : Variant::Array(values);
}

std::optional<Variant> ToInteger(const std::string& text) {
  std::int32_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end) return std::nullopt;
  return Variant::Integer(number);
}

std::optional<Variant> ConvertTo(VarType type, const Variant& value) {
  if (type != VT_I4 && type != VT_BSTR) return std::nullopt;
  if (value.type() == type) return value;
  if (value.type() == VT_BSTR) return ToInteger(value.string());
  if (value.type() == VT_I4) return Variant::String(std::to_string(value.integer()));
  return std::nullopt;
}

bool Contains(const std::vector<Variant>& values, const Variant& value) {
  return std::find(values.begin(), values.end(), value) != values.end();
}

std::vector<Variant> Merge(std::int32_t control, std::vector<Variant> values,
                           const std::vector<Variant>& change) {
  if (control == ADS_PROPERTY_APPEND) {
    for (const Variant& value : change) {
      if (!Contains(values, value)) values.push_back(value);
    }
    return values;
  }
  if (control == ADS_PROPERTY_DELETE) {
    std::erase_if(values, [&](const Variant& value) { return Contains(change, value); });
    return values;
  }
  return change;
}

}  // namespace

FakeDirectoryObject::FakeDirectoryObject(std::shared_ptr<FakeDirectoryState> state,
                                         std::string path, std::string key,
                                         std::vector<Guid> interfaces, bool is_new)
    : state_(std::move(state)),
      path_(std::move(path)),
      key_(std::move(key)),
      interfaces_(std::move(interfaces)),
      is_new_(is_new) {
  ++state_->live_objects;
}

FakeDirectoryObject::~FakeDirectoryObject() { --state_->live_objects; }

HRESULT FakeDirectoryObject::QueryInterface(const Guid& iid, void** object) {
  if (object == nullptr) return E_POINTER;
  const bool offered = iid == IID_IUnknown || iid == IID_IADs ||
                       std::find(interfaces_.begin(), interfaces_.end(), iid) != interfaces_.end();
  *object = offered ? static_cast<IADs*>(this) : nullptr;
  if (!offered) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

FakeEntry* FakeDirectoryObject::FindEntry() const {
  const auto found = state_->entries.find(key_);
  return found == state_->entries.end() ? nullptr : &found->second;
}

HRESULT FakeDirectoryObject::Fill() {
  if (is_filled_ || is_new_) return S_OK;
  ++state_->reads;
  const FakeEntry* const entry = FindEntry();
  if (entry == nullptr) return kNoSuchObject;
  for (const auto& [name, value] : entry->attributes) cache_.try_emplace(name, ValuesOf(value));
  is_filled_ = true;
  return S_OK;
}

HRESULT FakeDirectoryObject::Refresh(const std::string& name) {
  ++state_->reads;
  const FakeEntry* const entry = FindEntry();
  if (entry == nullptr) return kNoSuchObject;
  dropped_.erase(name);
  const auto found = entry->attributes.find(name);
  if (found != entry->attributes.end()) cache_[name] = ValuesOf(found->second);
  return S_OK;
}

HRESULT FakeDirectoryObject::Get(std::string_view name, Variant& value) {
  value = {};
  const std::string key(name);
  state_->calls.push_back({.kind = DirectoryCall::Kind::kGet, .path = path_, .name = key});
  if (const auto staged = staged_.find(name); staged != staged_.end()) {
    value = ShapeOf(staged->second.values);
    return value.IsEmpty() ? E_ADS_PROPERTY_NOT_FOUND : S_OK;
  }
  if (dropped_.contains(name)) {
    if (const HRESULT status = Refresh(key); FAILED(status)) return status;
  } else if (!cache_.contains(name)) {
    if (const HRESULT status = Fill(); FAILED(status)) return status;
  }
  const auto found = cache_.find(name);
  if (found != cache_.end()) value = ShapeOf(found->second);
  return value.IsEmpty() ? E_ADS_PROPERTY_NOT_FOUND : S_OK;
}

HRESULT FakeDirectoryObject::Put(std::string_view name, const Variant& value) {
  state_->calls.push_back({.kind = DirectoryCall::Kind::kPut,
                           .path = path_,
                           .name = std::string(name),
                           .value = value});
  return Stage(ADS_PROPERTY_UPDATE, name, value);
}

HRESULT FakeDirectoryObject::PutEx(std::int32_t control, std::string_view name,
                                   const Variant& value) {
  state_->calls.push_back({.kind = DirectoryCall::Kind::kPutEx,
                           .path = path_,
                           .name = std::string(name),
                           .control = control,
                           .value = value});
  if (control < ADS_PROPERTY_CLEAR || control > ADS_PROPERTY_DELETE) return E_ADS_BAD_PARAMETER;
  const bool needs_values = control == ADS_PROPERTY_APPEND || control == ADS_PROPERTY_DELETE;
  if (needs_values && (value.type() != kVariantArray || value.array().empty())) {
    return E_ADS_BAD_PARAMETER;
  }
  return Stage(control, name, control == ADS_PROPERTY_CLEAR ? Variant::Array({}) : value);
}

HRESULT FakeDirectoryObject::Stage(std::int32_t control, std::string_view name,
                                   const Variant& value) {
  const auto type = state_->schema.find(name);
  if (type == state_->schema.end() || value.IsEmpty()) return E_ADS_CANT_CONVERT_DATATYPE;
  std::vector<Variant> values;
  for (const Variant& given : ValuesOf(value)) {
    std::optional<Variant> converted = ConvertTo(type->second.type, given);
    if (!converted) return E_ADS_CANT_CONVERT_DATATYPE;
    values.push_back(*std::move(converted));
  }
  staged_.insert_or_assign(type->first, Staged{control, std::move(values)});
  return S_OK;
}

HRESULT FakeDirectoryObject::Apply(FakeAttributes& attributes) const {
  for (const auto& [name, change] : staged_) {
    const Variant empty_text = Variant::String({});
    if (Contains(change.values, empty_text)) return kInvalidSyntax;
    const auto held = attributes.find(name);
    const std::vector<Variant> before =
        held == attributes.end() ? std::vector<Variant>() : ValuesOf(held->second);
    const std::vector<Variant> after = Merge(change.control, before, change.values);
    const auto type = state_->schema.find(name);
    if (after.size() > 1 && type->second.is_single_valued) return kConstraintViolation;
    attributes.erase(name);
    if (!after.empty()) attributes.emplace(name, ShapeOf(after));
  }
  return S_OK;
}

HRESULT FakeDirectoryObject::SetInfo() {
  state_->calls.push_back({.kind = DirectoryCall::Kind::kSetInfo, .path = path_});
  if (staged_.empty() && !is_new_) return S_OK;
  FakeEntry* const entry = FindEntry();
  if (is_new_ && entry != nullptr) return kObjectAlreadyExists;
  if (!is_new_ && entry == nullptr) return kNoSuchObject;
  // Worked out on the side, so that a refused attribute leaves all of them as they were.
  FakeAttributes attributes = is_new_ ? FakeAttributes() : entry->attributes;
  if (const HRESULT status = Apply(attributes); FAILED(status)) return status;
  state_->entries[key_] = {.attributes = std::move(attributes), .interfaces = interfaces_};
  is_new_ = false;
  SettleCache();
  return S_OK;
}

void FakeDirectoryObject::SettleCache() {
  for (auto& [name, change] : staged_) {
    cache_.erase(name);
    dropped_.erase(name);
    if (change.control == ADS_PROPERTY_APPEND || change.control == ADS_PROPERTY_DELETE) {
      dropped_.insert(name);
    } else {
      cache_.emplace(name, std::move(change.values));
    }
  }
  staged_.clear();
}

}  // namespace pelora::testing
