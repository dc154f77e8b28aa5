// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/store_object.h"
#include "platform/ads.h"
#include "platform/counted.h"

namespace pelora::ldap {

/// An object that is made in memory first: nothing is in the directory, and nothing is asked of it,
/// before `SetInfo`, which is one add request with everything staged. A failed one leaves nothing
/// behind, and what was staged stays staged. From the commit on it is the object that was made,
/// with what the directory itself gave it.
///
/// Born with a count of 1. It offers the interfaces of its class from the beginning.
class NewStoreObject final : public Counted<IADs> {
 public:
  /// `dn` is the name that it is to have, `object_class` the LDAP display name of its class.
  /// `store` outlives the object. What the store says of failed requests goes to `last_failure`.
  NewStoreObject(IDirectoryStore& store, std::string dn, const std::string& object_class,
                 std::shared_ptr<StoreStatus> last_failure);

  [[nodiscard]] const std::string& dn() const { return dn_; }
  [[nodiscard]] bool is_committed() const { return is_committed_; }

  [[nodiscard]] HRESULT QueryInterface(const Guid& iid, void** object) override;

  /// Before the commit: what is staged, or `E_ADS_PROPERTY_NOT_FOUND`.
  [[nodiscard]] HRESULT Get(std::string_view name, Variant& value) override;
  [[nodiscard]] HRESULT Put(std::string_view name, const Variant& value) override;
  [[nodiscard]] HRESULT PutEx(std::int32_t control, std::string_view name,
                              const Variant& value) override;
  [[nodiscard]] HRESULT SetInfo() override;

  /// Stages bytes as the one value of an attribute, whatever its syntax; before the commit only
  /// (`E_UNEXPECTED` afterwards). For what has no form as a variant: passwords. They are wiped from
  /// memory when the object is committed or goes.
  [[nodiscard]] HRESULT PutBytes(std::string_view name, std::string bytes);

 private:
  ~NewStoreObject() override;

  [[nodiscard]] HRESULT Encode(std::string_view name, const Variant& value,
                               AttributeValues& values) const;
  void WipeSecrets(AttributeMap& attributes) const;

  IDirectoryStore& store_;
  std::string dn_;
  std::shared_ptr<StoreStatus> last_failure_;
  /// What this is from the commit on, and what knows its interfaces before.
  Ref<StoreObject> object_;
  bool is_committed_ = false;
  AttributeMap staged_;
  /// Attributes whose values are to leave nothing behind.
  std::vector<std::string> secret_;
};

}  // namespace pelora::ldap
