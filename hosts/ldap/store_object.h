// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/ldap/bound_attributes.h"
#include "hosts/ldap/directory_store.h"
#include "platform/ads.h"
#include "platform/counted.h"

namespace pelora::ldap {

/// Is told what bound objects answer, and when they go.
class IReadingWitness {
 public:
  virtual ~IReadingWitness() = default;
  /// `Get` of the object `dn` answers from `values`, as the directory holds them; none: not set.
  /// What is answered from what was staged is not told.
  virtual void OnTold(const std::string& dn, std::string_view attribute,
                      const AttributeValues& values) = 0;
  /// An object is about to go: of thousands, which go one after the other, that takes its time.
  virtual void OnReleased() noexcept = 0;
};

/// How objects are bound.
struct BindingOptions {
  /// What is read of an object, `objectClass` besides. None: all of it. Another attribute that is
  /// asked for is then read by itself, once.
  std::vector<std::string> attributes = BoundAttributes();
  /// May be null. Outlives the objects.
  IReadingWitness* witness = nullptr;

  /// Whether binding reads an attribute.
  [[nodiscard]] bool Covers(std::string_view attribute) const;
};

/// An object bound from a store, with its property cache. Born with a count of 1.
///
/// The first read of a name that is not cached reads the whole object, or as much of it as the
/// binding's options say, once, unless it was handed over when the object was bound; from then on a
/// missing name is answered from the cache. What was staged is what is read. `SetInfo` is one
/// modify request; afterwards what was replaced stays cached as it was sent, while an attribute
/// that values were added to or deleted from is read anew when it is next asked for.
class StoreObject final : public Counted<IADs> {
 public:
  /// What the object is in the directory.
  struct Identity {
    /// Empty for the root entry.
    std::string dn;
    bool is_root = false;
    /// Its `objectClass` values, which decide on the interfaces it offers.
    AttributeValues classes;
  };

  using Options = std::shared_ptr<const BindingOptions>;

  /// `store` outlives the object. What the store says of failed requests goes to `last_failure`.
  StoreObject(IDirectoryStore& store, Identity identity, std::shared_ptr<StoreStatus> last_failure,
              Options options = std::make_shared<BindingOptions>());
  /// An object of which everything that the options name has been read already.
  StoreObject(IDirectoryStore& store, Identity identity, std::shared_ptr<StoreStatus> last_failure,
              AttributeMap attributes, Options options = std::make_shared<BindingOptions>());

  [[nodiscard]] HRESULT QueryInterface(const Guid& iid, void** object) override;

  [[nodiscard]] HRESULT Get(std::string_view name, Variant& value) override;
  [[nodiscard]] HRESULT Put(std::string_view name, const Variant& value) override;
  [[nodiscard]] HRESULT PutEx(std::int32_t control, std::string_view name,
                              const Variant& value) override;
  [[nodiscard]] HRESULT SetInfo() override;

 private:
  ~StoreObject() override;

  [[nodiscard]] Modification* FindStaged(std::string_view name);
  [[nodiscard]] HRESULT Stage(Modification::Operation operation, std::string_view name,
                              const Variant& value);
  [[nodiscard]] StoreStatus ReadEntry(std::vector<std::string> attributes, Entry& entry);
  /// Sees to it that the cache holds the directory's values of a name, if there are any.
  [[nodiscard]] HRESULT Provide(std::string_view name);
  [[nodiscard]] HRESULT FillCache();
  [[nodiscard]] HRESULT Refresh(std::string_view name);
  /// For an attribute that the directory's schema does not know.
  [[nodiscard]] HRESULT NotInSchema(std::string_view name);
  void SettleCache();
  [[nodiscard]] HRESULT Answer(StoreStatus status);

  IDirectoryStore& store_;
  Identity identity_;
  std::shared_ptr<StoreStatus> last_failure_;
  Options options_;
  bool is_filled_ = false;
  AttributeMap cache_;
  /// In the order of staging, at most one of each attribute.
  std::vector<Modification> staged_;
  /// Attributes whose values the directory alone knows since they were added to or deleted from.
  std::set<std::string, AttributeNameLess> outdated_;
  /// Attributes that have been read by themselves.
  std::set<std::string, AttributeNameLess> asked_;
};

}  // namespace pelora::ldap
