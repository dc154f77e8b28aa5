// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "platform/unknown.h"

namespace pelora {

/// First base of an object that lives by its references: it counts them, and destroys the object
/// with the last. `Interfaces` are the ports of the object; a second one stands here too, for its
/// references are the same. Used on one thread.
template <class... Interfaces>
class Counted : public Interfaces... {
 public:
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;

  std::uint32_t AddRef() final { return ++references_; }
  std::uint32_t Release() final {
    const std::uint32_t left = --references_;
    if (left == 0) delete this;
    return left;
  }

 protected:
  /// The count that the object is born with.
  explicit Counted(std::uint32_t references = 1) : references_(references) {}
  virtual ~Counted() = default;

  [[nodiscard]] std::uint32_t references() const { return references_; }

 private:
  std::uint32_t references_;
};

/// The same for an object that offers one interface and nothing besides.
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
  using Counted<Interface>::Counted;
};

}  // namespace pelora
