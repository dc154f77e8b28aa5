// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "platform/unknown.h"

namespace pelora::windows {

/// Counting and the one interface of a port's object, for adapters that add nothing to it. Born
/// with a count of 1; used on one thread.
template <class Interface>
class CountedPort : public Interface {
 public:
  CountedPort() = default;
  CountedPort(const CountedPort&) = delete;
  CountedPort& operator=(const CountedPort&) = delete;

  [[nodiscard]] HRESULT QueryInterface(const Guid& iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    const bool offered = iid == Interface::kIid || iid == pelora::IID_IUnknown;
    *object = offered ? static_cast<Interface*>(this) : nullptr;
    if (!offered) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  std::uint32_t AddRef() final { return ++references_; }
  std::uint32_t Release() final {
    const std::uint32_t left = --references_;
    if (left == 0) delete this;
    return left;
  }

 protected:
  virtual ~CountedPort() = default;

 private:
  std::uint32_t references_ = 1;
};

}  // namespace pelora::windows
