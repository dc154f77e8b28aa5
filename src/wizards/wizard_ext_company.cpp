// SPDX-License-Identifier: Apache-2.0
#include "wizards/wizard_ext_company.h"

#include <array>

#include "pages/handler.h"
#include "resources/resource.h"

namespace pelora {
namespace {

constexpr std::array<ControlId, 7> kEnabledControls = {
    IDC_PELORA_HIDDEN,      IDC_SERVER_LABEL,       IDC_SERVER,
    IDC_SERVER_SELECT,      IDC_SYSTEM_ADMIN_LABEL, IDC_SYSTEM_ADMIN,
    IDC_SYSTEM_ADMIN_SELECT};

constexpr const Attribute& kHidden = CatalogueEntry("peloraHidden");
constexpr const Attribute& kSystemAdmin = CatalogueEntry("peloraSystemAdmin");
constexpr const Attribute& kServer = CatalogueEntry("peloraCompanyServer");

}  // namespace

CWizardExtCompany::CWizardExtCompany(const Platform& platform)
    : CWizardPage(platform, {.dialog_template = IDD_WIZARD_EXT_COMPANY,
                             .title = "New object: Organizational Unit",
                             .object_interface = IID_IADsOU,
                             .enabled_controls = kEnabledControls}) {
  using enum ControlNotification;
  RegisterCollect(Handler(this, &CWizardExtCompany::Collect));
  RegisterValidate([](std::string* /*message*/) { return S_OK; });
  Route({
      {IDC_CREATE_PELORA, kClicked, Handler(this, &CWizardExtCompany::OnCreateClicked)},
      {IDC_SERVER_SELECT, kClicked, Handler(this, &CWizardExtCompany::OnSelectServer)},
      {IDC_SYSTEM_ADMIN_SELECT, kClicked, Handler(this, &CWizardExtCompany::OnSelectSystemAdmin)},
  });
}

HRESULT CWizardExtCompany::Collect(ChangeList& changes) {
  changes.push_back(MakeNewObjectChange(kHidden, FlagOf(IDC_PELORA_HIDDEN)));
  changes.push_back(MakeNewObjectChange(kSystemAdmin, Dialog().Text(IDC_SYSTEM_ADMIN)));
  changes.push_back(MakeNewObjectChange(kServer, Dialog().Text(IDC_SERVER)));
  return S_OK;
}

std::int32_t CWizardExtCompany::OnSelectServer() { return ChooseComputer(IDC_SERVER); }

std::int32_t CWizardExtCompany::OnSelectSystemAdmin() { return ChooseUser(IDC_SYSTEM_ADMIN); }

}  // namespace pelora
