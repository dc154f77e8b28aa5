// SPDX-License-Identifier: Apache-2.0
#include "wizards/wizard_ext_contact.h"

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

CWizardExtContact::CWizardExtContact(const Platform& platform)
    : CWizardPage(platform, {.dialog_template = IDD_WIZARD_EXT_CONTACT,
                             .title = "New object: contact",
                             .enabled_controls = kEnabledControls}) {
  using enum ControlNotification;
  RegisterCollect(Handler(this, &CWizardExtContact::Collect));
  RegisterValidate(Handler(this, &CWizardExtContact::Validate));
  Route({
      {IDC_CREATE_PELORA, kClicked, Handler(this, &CWizardExtContact::OnCreateClicked)},
      {IDC_NEW_ADDRESS, kEditChange, Handler(this, &CWizardExtContact::Revalidate)},
  });
}

HRESULT CWizardExtContact::Collect(ChangeList& changes) {
  changes.push_back(MakeNewObjectChange(kHidden, FlagOf(IDC_PELORA_HIDDEN)));
  changes.push_back(MakeNewObjectChange(kMail, Dialog().Text(IDC_NEW_ADDRESS)));
  return S_OK;
}

HRESULT CWizardExtContact::Validate(std::string* message) {
  return RequireText(IDC_NEW_ADDRESS, "Missing Email Address", message);
}

}  // namespace pelora
