// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/windows/system_headers.h"
#include "platform/ads.h"
#include "platform/counted.h"

namespace pelora::windows {

/// An object of the system's directory interfaces behind the port. It holds one reference to the
/// system's object; the property cache is the system's.
class AdsObject final : public CountedPort<pelora::IADs> {
 public:
  explicit AdsObject(Ref<::IADs> object) : object_(std::move(object)) {}

  /// Puts what the system bound behind the port. `E_NOINTERFACE` when it is no directory object.
  [[nodiscard]] static HRESULT Wrap(::IUnknown& bound, Ref<pelora::IADs>& object);

  /// Fills the property cache, so that reading asks the directory no more. Only a directory that
  /// could not be asked is a failure: whatever else is wrong, each read answers for itself.
  [[nodiscard]] static HRESULT FillCache(::IUnknown& bound);

  [[nodiscard]] HRESULT QueryInterface(const Guid& iid, void** object) override;
  [[nodiscard]] HRESULT Get(std::string_view name, Variant& value) override;
  [[nodiscard]] HRESULT Put(std::string_view name, const Variant& value) override;
  [[nodiscard]] HRESULT PutEx(std::int32_t control, std::string_view name,
                              const Variant& value) override;
  [[nodiscard]] HRESULT SetInfo() override;

 private:
  ~AdsObject() override = default;

  Ref<::IADs> object_;
};

}  // namespace pelora::windows
