// SPDX-License-Identifier: Apache-2.0
#include "wizards/wizard_addresslist.h"

#include "pages/handler.h"
#include "resources/resource.h"

namespace pelora {

CWizardAddresslist::CWizardAddresslist(const Platform& platform)
    : CWizardPage(platform, {.dialog_template = IDD_WIZARD_ADDRESSLIST,
                             .title = "New object: peloraAddresslist"}) {
  using enum ControlNotification;
  Route({{IDC_OBJECT_NAME, kEditChange, Handler(this, &CWizardAddresslist::OnNameChanged)}});
}

}  // namespace pelora
