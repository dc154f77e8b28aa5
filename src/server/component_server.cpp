// SPDX-License-Identifier: Apache-2.0
#include "server/component_server.h"

#include "server/class_table.h"

namespace pelora {

HRESULT CreateComponent(const Guid& class_id, const Platform& platform, const Guid& iid,
                        void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  const ComponentClass* component_class = FindClass(class_id);
  if (component_class == nullptr) return CLASS_E_CLASSNOTAVAILABLE;
  const auto component = Ref<IUnknown>::Adopt(component_class->create(platform));
  return component->QueryInterface(iid, object);
}

}  // namespace pelora
