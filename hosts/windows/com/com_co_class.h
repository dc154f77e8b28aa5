// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/windows/com/class_factory.h"
#include "hosts/windows/values/system_guid.h"

namespace pelora::windows {

/// Base of an object that is one of the module's component classes: which one, and how its class
/// factory is made. `Shell` has a `CreateInstance` of the form of `CreateInstanceFunction`.
template <class Shell>
class CComCoClass {
 public:
  [[nodiscard]] static HRESULT CreateClassFactory(const ModuleContext& context,
                                                  const ComponentClass& component_class, REFIID iid,
                                                  void** factory) {
    return CreateComObject<CComClassFactory>(iid, factory, context, component_class,
                                             &Shell::CreateInstance);
  }

 protected:
  explicit CComCoClass(const ComponentClass& component_class) : component_class_(component_class) {}
  ~CComCoClass() = default;

  [[nodiscard]] CLSID GetObjectClsid() const { return ToSystem(component_class_.class_id); }

 private:
  const ComponentClass& component_class_;
};

}  // namespace pelora::windows
