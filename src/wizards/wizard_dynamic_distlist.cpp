// SPDX-License-Identifier: Apache-2.0
#include "wizards/wizard_dynamic_distlist.h"

#include "pages/handler.h"
#include "resources/resource.h"

namespace pelora {

CWizardDynamicDistlist::CWizardDynamicDistlist(const Platform& platform)
    : CWizardPage(platform, {.dialog_template = IDD_WIZARD_DYNAMIC_DISTLIST,
                             .title = "New object: dynamic distlist"}) {
  using enum ControlNotification;
  Route({{IDC_OBJECT_NAME, kEditChange, Handler(this, &CWizardDynamicDistlist::OnNameChanged)}});
}

}  // namespace pelora
