// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/win32_choosers.h"

#include "platform/dialog_controller.h"

namespace pelora::windows {

HRESULT Win32Choosers::CreateObjectPicker(std::unique_ptr<IDsObjectPicker>& chooser) {
  chooser.reset();
  return E_NOTIMPL;
}

HRESULT Win32Choosers::CreateCommonQuery(std::unique_ptr<ICommonQuery>& chooser) {
  chooser.reset();
  return E_NOTIMPL;
}

std::int32_t Win32Choosers::BrowseForContainer(const ContainerBrowserInit& /*init*/,
                                               std::string& path) {
  path.clear();
  return kDialogCancel;
}

}  // namespace pelora::windows
