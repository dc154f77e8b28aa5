// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/com/provide_class_info.h"

#include "hosts/windows/module/module_path.h"
#include "platform/unknown.h"

namespace pelora::windows {

HRESULT ReadClassInfo(HINSTANCE instance, REFCLSID class_id, ITypeInfo** info) {
  Ref<ITypeLib> library;
  const HRESULT status = LoadTypeLibEx(ModulePath(instance).c_str(), REGKIND_NONE, library.Put());
  return FAILED(status) ? status : library->GetTypeInfoOfGuid(class_id, info);
}

}  // namespace pelora::windows
