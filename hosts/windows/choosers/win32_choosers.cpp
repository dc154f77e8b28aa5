// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/choosers/win32_choosers.h"

#include "hosts/windows/choosers/common_query.h"
#include "hosts/windows/choosers/container_browser.h"
#include "hosts/windows/choosers/object_picker.h"

namespace pelora::windows {

HRESULT Win32Choosers::CreateObjectPicker(std::unique_ptr<pelora::IDsObjectPicker>& chooser) {
  return ObjectPicker::Create(chooser);
}

HRESULT Win32Choosers::CreateCommonQuery(std::unique_ptr<pelora::ICommonQuery>& chooser) {
  return CommonQuery::Create(chooser);
}

std::int32_t Win32Choosers::BrowseForContainer(const ContainerBrowserInit& init,
                                               std::string& path) {
  return windows::BrowseForContainer(init, path);
}

}  // namespace pelora::windows
