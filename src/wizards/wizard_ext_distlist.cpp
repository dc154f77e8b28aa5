// SPDX-License-Identifier: Apache-2.0
#include "wizards/wizard_ext_distlist.h"

#include <array>

#include "pages/handler.h"
#include "resources/resource.h"

namespace pelora {
namespace {

constexpr std::array<ControlId, 3> kEnabledControls = {IDC_PELORA_HIDDEN, IDC_NEW_ADDRESS_LABEL,
                                                       IDC_NEW_ADDRESS};

constexpr const Attribute& kHidden = CatalogueEntry("peloraHidden");
constexpr const Attribute& kMail = CatalogueEntry("mail");

}  // namespace

CWizardExtDistlist::CWizardExtDistlist(const Platform& platform)
    : CWizardPage(platform, {.dialog_template = IDD_WIZARD_EXT_DISTLIST,
                             .title = "New object: distlist",
                             .enabled_controls = kEnabledControls}) {
  using enum ControlNotification;
  RegisterCollect(Handler(this, &CWizardExtDistlist::Collect));
  RegisterValidate([](std::string* /*message*/) { return S_OK; });
  Route({{IDC_CREATE_PELORA, kClicked, Handler(this, &CWizardExtDistlist::OnCreateClicked)}});
}

HRESULT CWizardExtDistlist::Collect(ChangeList& changes) {
  changes.push_back(MakeNewObjectChange(kHidden, FlagOf(IDC_PELORA_HIDDEN)));
  changes.push_back(MakeNewObjectChange(kMail, Dialog().Text(IDC_NEW_ADDRESS)));
  return S_OK;
}

}  // namespace pelora
