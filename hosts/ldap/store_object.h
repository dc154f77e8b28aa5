// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "platform/ads.h"

namespace pelora::ldap {

/// An object bound from a store, with its property cache. Born with a count of 1.
///
/// The first read of a name that is not cached reads all of `BoundAttributes`, once, unless they
/// were handed over when the object was bound; from then on a missing name is answered from the
/// cache. Another name is read by itself, once. What was
/// staged is what is read. `SetInfo` is one modify request; afterwards what was replaced stays
/// cached as it was sent, while an attribute that values were added to or deleted from is read anew
/// when it is next asked for.
class StoreObject final : public IADs {
 public:
  /// What the object is in the directory.
  struct Identity {
    /// Empty for the root entry.
    std::string dn;
    bool is_root = false;
    /// Its `objectClass` values, which decide on the interfaces it offers.
    AttributeValues classes;
  };

  /// `store` outlives the object. What the store says of failed requests goes to `last_failure`.
  StoreObject(IDirectoryStore& store, Identity identity, std::shared_ptr<StoreStatus> last_failure);
  /// An object whose attributes have been read already, all of `BoundAttributes`.
  StoreObject(IDirectoryStore& store, Identity identity, std::shared_ptr<StoreStatus> last_failure,
              AttributeMap attributes);
  StoreObject(const StoreObject&) = delete;
  StoreObject& operator=(const StoreObject&) = delete;

  [[nodiscard]] HRESULT QueryInterface(const Guid& iid, void** object) override;
  std::uint32_t AddRef() override { return ++count_; }
  std::uint32_t Release() override;

  [[nodiscard]] HRESULT Get(std::string_view name, Variant& value) override;
  [[nodiscard]] HRESULT Put(std::string_view name, const Variant& value) override;
  [[nodiscard]] HRESULT PutEx(std::int32_t control, std::string_view name,
                              const Variant& value) override;
  [[nodiscard]] HRESULT SetInfo() override;

 private:
  ~StoreObject() = default;

  [[nodiscard]] Modification* FindStaged(std::string_view name);
  [[nodiscard]] HRESULT Stage(Modification::Operation operation, std::string_view name,
                              const Variant& value);
  [[nodiscard]] StoreStatus ReadEntry(std::vector<std::string> attributes, Entry& entry);
  /// Brings an attribute's values into the cache, if it has any and they are not there.
  [[nodiscard]] HRESULT Load(std::string_view name);
  [[nodiscard]] HRESULT FillCache();
  [[nodiscard]] HRESULT Refresh(std::string_view name);
  /// For an attribute that the directory's schema does not know.
  [[nodiscard]] HRESULT NotInSchema(std::string_view name);
  void SettleCache();
  [[nodiscard]] HRESULT Answer(StoreStatus status);

  IDirectoryStore& store_;
  Identity identity_;
  std::shared_ptr<StoreStatus> last_failure_;
  std::uint32_t count_ = 1;
  bool is_filled_ = false;
  AttributeMap cache_;
  /// In the order of staging, at most one of each attribute.
  std::vector<Modification> staged_;
  /// Attributes whose values the directory alone knows since they were added to or deleted from.
  std::set<std::string, AttributeNameLess> outdated_;
  /// Attributes that were read by themselves and are as cached, or not there.
  std::set<std::string, AttributeNameLess> read_alone_;
};

}  // namespace pelora::ldap
