// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <utility>

#include "hosts/windows/system_headers.h"

namespace pelora::windows {

/// Owns one thing of the system's and gives it back when it goes. `Traits` names the thing's type,
/// the value that stands for none, and how it is given back.
template <class Traits>
class UniqueResource {
 public:
  using Type = typename Traits::Type;

  UniqueResource() = default;
  explicit UniqueResource(Type resource) : resource_(resource) {}
  UniqueResource(UniqueResource&& other) noexcept : resource_(other.Detach()) {}
  UniqueResource& operator=(UniqueResource&& other) noexcept {
    std::swap(resource_, other.resource_);
    return *this;
  }
  ~UniqueResource() { Reset(); }

  [[nodiscard]] Type Get() const { return resource_; }
  explicit operator bool() const { return resource_ != Traits::kNone; }
  /// Gives the thing away; the caller has to give it back.
  [[nodiscard]] Type Detach() { return std::exchange(resource_, Traits::kNone); }
  /// Gives back what is owned and gives the address to fill.
  [[nodiscard]] Type* Put() {
    Reset();
    return &resource_;
  }
  void Reset() {
    if (resource_ != Traits::kNone) Traits::Close(Detach());
  }

 private:
  Type resource_ = Traits::kNone;
};

struct BstrTraits {
  using Type = BSTR;
  static constexpr Type kNone = nullptr;
  static void Close(Type text) { SysFreeString(text); }
};

struct SafeArrayTraits {
  using Type = SAFEARRAY*;
  static constexpr Type kNone = nullptr;
  static void Close(Type array) { SafeArrayDestroy(array); }
};

struct RegistryKeyTraits {
  using Type = HKEY;
  static constexpr Type kNone = nullptr;
  static void Close(Type key) { RegCloseKey(key); }
};

struct LibraryTraits {
  using Type = HMODULE;
  static constexpr Type kNone = nullptr;
  static void Close(Type library) { FreeLibrary(library); }
};

using UniqueBstr = UniqueResource<BstrTraits>;
using UniqueSafeArray = UniqueResource<SafeArrayTraits>;
using UniqueRegistryKey = UniqueResource<RegistryKeyTraits>;
using UniqueLibrary = UniqueResource<LibraryTraits>;

/// Owns a VARIANT and what it carries.
class UniqueVariant {
 public:
  UniqueVariant() { VariantInit(&variant_); }
  UniqueVariant(UniqueVariant&& other) noexcept : variant_(other.Detach()) {}
  UniqueVariant& operator=(UniqueVariant&& other) noexcept {
    std::swap(variant_, other.variant_);
    return *this;
  }
  ~UniqueVariant() { VariantClear(&variant_); }

  [[nodiscard]] const VARIANT& Get() const { return variant_; }
  /// Gives the value away; the caller has to clear it.
  [[nodiscard]] VARIANT Detach() {
    const VARIANT variant = variant_;
    VariantInit(&variant_);
    return variant;
  }
  /// Clears what is owned and gives the address to fill.
  [[nodiscard]] VARIANT* Put() {
    VariantClear(&variant_);
    return &variant_;
  }

 private:
  VARIANT variant_;
};

}  // namespace pelora::windows
