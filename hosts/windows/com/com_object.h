// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <optional>
#include <utility>

#include "hosts/windows/com/module_context.h"

namespace pelora::windows {

/// First base of every object: its count of references, which begins at 1, and its lock on the
/// module, which is the last thing that it gives up unless it says otherwise.
///
/// Objects are used in one apartment. Their references are not: a page may be released on the
/// sheet's thread while the console lets its component go on its own.
class CComObjectRootEx {
 public:
  CComObjectRootEx(const CComObjectRootEx&) = delete;
  CComObjectRootEx& operator=(const CComObjectRootEx&) = delete;

 protected:
  explicit CComObjectRootEx(const ModuleContext& context)
      : context_(context), lock_(std::in_place, context.module) {}
  ~CComObjectRootEx() = default;

  [[nodiscard]] const ModuleContext& context() const { return context_; }
  ULONG InternalAddRef() { return ++references_; }
  ULONG InternalRelease() { return --references_; }
  [[nodiscard]] ULONG references() const { return references_; }
  /// What is left of the object no longer keeps the module loaded.
  void GiveUpModuleLock() { lock_.reset(); }

 private:
  const ModuleContext& context_;
  std::optional<ModuleLock> lock_;
  std::atomic<ULONG> references_ = 1;
};

/// The interfaces that an object answers `QueryInterface` with. The first one is its identity.
template <class... Interfaces>
struct InterfaceList {
  /// The interface of that identifier; null when it is not among them.
  template <class Object>
  static void* Find(Object* object, REFIID iid) {
    void* found = nullptr;
    (Offer<Interfaces>(object, iid, found), ...);
    return found;
  }

 private:
  template <class Interface>
  static void Offer(Interface* offered, REFIID iid, void*& found) {
    const bool is_wanted =
        IsEqualIID(iid, __uuidof(Interface)) || IsEqualIID(iid, __uuidof(::IUnknown));
    if (found == nullptr && is_wanted) found = offered;
  }
};

/// An object that lives by its references. `Base` derives from `CComObjectRootEx` and from the
/// interfaces that it lists in `Base::Interfaces`.
template <class Base>
class CComObject final : public Base {
 public:
  using Base::Base;

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = Base::Interfaces::Find(static_cast<Base*>(this), iid);
    if (*object == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return this->InternalAddRef(); }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = this->InternalRelease();
    if (left == 0) delete this;
    return left;
  }
};

/// Makes an object and gives its interface `iid` in `*object`, with a reference for the caller;
/// `*object` is null after any failure.
template <class Base, class... Arguments>
[[nodiscard]] HRESULT CreateComObject(REFIID iid, void** object, Arguments&&... arguments) {
  auto* const made = new CComObject<Base>(std::forward<Arguments>(arguments)...);
  const HRESULT status = made->QueryInterface(iid, object);
  made->Release();
  return status;
}

}  // namespace pelora::windows
