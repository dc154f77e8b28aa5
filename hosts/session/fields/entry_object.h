// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/ldap/attribute_value.h"
#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/entry_values.h"
#include "platform/ads.h"

namespace pelora::session {

/// An entry that has been read, as a bound object that can only be read. It is its maker's, and not
/// held beyond that: references are not counted.
class EntryObject final : public IADs {
 public:
  /// Both outlive the object.
  EntryObject(const ldap::Entry& entry, const ldap::Schema& schema)
      : entry_(entry), schema_(schema) {}

  [[nodiscard]] HRESULT QueryInterface(const Guid& iid, void** object) override {
    const bool is_offered = iid == IID_IADs || iid == IID_IUnknown;
    *object = is_offered ? static_cast<IADs*>(this) : nullptr;
    return is_offered ? S_OK : E_NOINTERFACE;
  }
  std::uint32_t AddRef() override { return 1; }
  std::uint32_t Release() override { return 1; }

  [[nodiscard]] HRESULT Get(std::string_view name, Variant& value) override {
    value = {};
    const ldap::AttributeValues& values = ldap::ValuesOf(entry_, name);
    if (values.empty()) return E_ADS_PROPERTY_NOT_FOUND;
    const auto type = schema_.Find(name);
    if (!type) return E_ADS_CANT_CONVERT_DATATYPE;
    return ldap::DecodeValues(type->syntax, values, value);
  }
  [[nodiscard]] HRESULT Put(std::string_view /*name*/, const Variant& /*value*/) override {
    return E_NOTIMPL;
  }
  [[nodiscard]] HRESULT PutEx(std::int32_t /*control*/, std::string_view /*name*/,
                              const Variant& /*value*/) override {
    return E_NOTIMPL;
  }
  [[nodiscard]] HRESULT SetInfo() override { return E_NOTIMPL; }

 private:
  const ldap::Entry& entry_;
  const ldap::Schema& schema_;
};

}  // namespace pelora::session
