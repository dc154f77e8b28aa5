// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

#include "platform/guid.h"
#include "platform/hresult.h"

namespace pelora {

/// Base of every counted object of the ports. An object starts with a count of 0 or 1 as its maker
/// says and destroys itself when `Release` brings the count to 0.
class IUnknown {
 public:
  static constexpr Guid kIid = IID_IUnknown;

  /// Asks for another interface of the same object. On success `*object` is that interface with a
  /// reference taken for the caller; otherwise it is null and `E_NOINTERFACE` is returned.
  [[nodiscard]] virtual HRESULT QueryInterface(const Guid& iid, void** object) = 0;
  /// Both return the new count, for diagnosis only.
  virtual std::uint32_t AddRef() = 0;
  virtual std::uint32_t Release() = 0;

 protected:
  ~IUnknown() = default;
};

/// Holds one reference to a counted object, or none.
template <class T>
class Ref {
 public:
  Ref() = default;
  Ref(std::nullptr_t) {}
  /// Takes a reference of its own.
  explicit Ref(T* object) : object_(object) {
    if (object_ != nullptr) object_->AddRef();
  }
  /// Takes over a reference that the caller already holds.
  static Ref Adopt(T* object) {
    Ref ref;
    ref.object_ = object;
    return ref;
  }
  Ref(const Ref& other) : Ref(other.object_) {}
  Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  ~Ref() { Reset(); }
  Ref& operator=(Ref other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }

  void Reset() {
    if (T* object = std::exchange(object_, nullptr); object != nullptr) object->Release();
  }
  /// Gives the reference away; the caller has to release it.
  [[nodiscard]] T* Detach() { return std::exchange(object_, nullptr); }
  /// Drops what is held and gives the address to fill, for `QueryInterface` and its like.
  [[nodiscard]] T** Put() {
    Reset();
    return &object_;
  }

  T* Get() const { return object_; }
  T* operator->() const { return object_; }
  T& operator*() const { return *object_; }
  explicit operator bool() const { return object_ != nullptr; }
  friend bool operator==(const Ref& left, const Ref& right) {
    return left.object_ == right.object_;
  }

 private:
  T* object_ = nullptr;
};

/// The interface `T` of `object`, or none when it is not offered. `T` names its identifier in
/// `kIid`.
template <class T>
[[nodiscard]] Ref<T> Query(IUnknown& object) {
  void* found = nullptr;
  if (FAILED(object.QueryInterface(T::kIid, &found))) return {};
  return Ref<T>::Adopt(static_cast<T*>(found));
}

}  // namespace pelora
