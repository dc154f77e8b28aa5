// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <cstdint>

#include "platform/unknown.h"

namespace pelora {

/// First base of an object that lives by its references: it counts them, and destroys the object
/// with the last. `Interfaces` are the ports of the object; a second one stands here too, for its
/// references are the same. `Count` is the counter's type.
template <class Count, class... Interfaces>
class CountedBy : public Interfaces... {
 public:
  CountedBy(const CountedBy&) = delete;
  CountedBy& operator=(const CountedBy&) = delete;

  std::uint32_t AddRef() final { return ++references_; }
  std::uint32_t Release() final {
    const std::uint32_t left = --references_;
    if (left == 0) delete this;
    return left;
  }

 protected:
  /// The count that the object is born with.
  explicit CountedBy(std::uint32_t references = 1) : references_(references) {}
  virtual ~CountedBy() = default;

  [[nodiscard]] std::uint32_t references() const { return references_; }
  /// Gives a reference back and leaves the object as it is, even when that was the last one.
  void ForgetReference() { --references_; }

 private:
  Count references_;
};

/// For objects that are used on one thread.
template <class... Interfaces>
using Counted = CountedBy<std::uint32_t, Interfaces...>;

/// For objects whose references may be taken and released on any thread.
template <class... Interfaces>
using CountedOnAnyThread = CountedBy<std::atomic<std::uint32_t>, Interfaces...>;

/// For an object, used on one thread, that offers one interface and nothing besides.
template <class Interface>
class CountedPort : public Counted<Interface> {
 public:
  [[nodiscard]] HRESULT QueryInterface(const Guid& iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    const bool is_offered = iid == Interface::kIid || iid == IID_IUnknown;
    *object = is_offered ? static_cast<Interface*>(this) : nullptr;
    if (!is_offered) return E_NOINTERFACE;
    this->AddRef();
    return S_OK;
  }

 protected:
  using Base = Counted<Interface>;
  using Base::Base;
};

}  // namespace pelora
