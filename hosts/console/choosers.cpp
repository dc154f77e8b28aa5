// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/choosers.h"

#include "platform/dialog_controller.h"

namespace pelora::console {

HRESULT NoChoosers::CreateObjectPicker(std::unique_ptr<IDsObjectPicker>& chooser) {
  chooser.reset();
  return E_NOTIMPL;
}

HRESULT NoChoosers::CreateCommonQuery(std::unique_ptr<ICommonQuery>& chooser) {
  chooser.reset();
  return E_NOTIMPL;
}

std::int32_t NoChoosers::BrowseForContainer(const ContainerBrowserInit& /*init*/,
                                            std::string& path) {
  path.clear();
  return kDialogCancel;
}

}  // namespace pelora::console
