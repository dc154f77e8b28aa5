// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "platform/ads.h"
#include "tests/windows/provider/unimplemented_ads.h"

namespace pelora::windows::test {

/// A directory object of the system's interfaces over one of the directory in memory, which it
/// holds. It offers the interfaces that the other one offers. Born with a count of 1.
class ProviderObject final : public UnimplementedAds {
 public:
  /// `reading` is what it answers when it is told to read everything.
  explicit ProviderObject(Ref<pelora::IADs> target, std::shared_ptr<const HRESULT> reading =
                                                        std::make_shared<HRESULT>(E_NOTIMPL))
      : target_(std::move(target)), reading_(std::move(reading)) {}
  ProviderObject(const ProviderObject&) = delete;
  ProviderObject& operator=(const ProviderObject&) = delete;

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override;

  STDMETHODIMP GetInfo() override { return *reading_; }
  STDMETHODIMP Get(BSTR name, VARIANT* value) override;
  STDMETHODIMP Put(BSTR name, VARIANT value) override;
  STDMETHODIMP PutEx(long control, BSTR name, VARIANT value) override;
  STDMETHODIMP SetInfo() override;

 private:
  ~ProviderObject() = default;

  [[nodiscard]] void* Find(REFIID iid);

  Ref<pelora::IADs> target_;
  std::shared_ptr<const HRESULT> reading_;
  ULONG references_ = 1;
};

}  // namespace pelora::windows::test
