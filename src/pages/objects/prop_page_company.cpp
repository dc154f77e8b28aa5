// SPDX-License-Identifier: Apache-2.0
#include "pages/objects/prop_page_company.h"

#include <array>
#include <string>

#include "pages/choose_name.h"
#include "pages/handler.h"
#include "resources/resource.h"

namespace pelora {
namespace {

constexpr std::array kFields = {
    EditedFields::Field{IDC_SYSTEM_ADMIN, CatalogueEntry("peloraSystemAdmin")},
    EditedFields::Field{IDC_SERVER, CatalogueEntry("peloraCompanyServer")},
};

}  // namespace

CPropPageCompany::CPropPageCompany(const Platform& platform)
    : CSnapInPropertyPage(platform, IID_IADs, {}, IDD_PROPPAGE_COMPANY, "Pelora"),
      account_(*this),
      fields_(*this, kFields) {
  using enum ControlNotification;
  RegisterLoad(Handler(&fields_, &EditedFields::Load));
  RegisterCollect(Handler(&fields_, &EditedFields::Collect));
  RegisterValidate([](std::string* /*message*/) { return S_OK; });
  Route(account_.Commands());
  Route(fields_.Commands());
  Route({
      {IDC_SYSTEM_ADMIN_SELECT, kClicked, Handler(this, &CPropPageCompany::OnSelectSystemAdmin)},
      {IDC_SERVER_SELECT, kClicked, Handler(this, &CPropPageCompany::OnSelectServer)},
  });
}

std::int32_t CPropPageCompany::OnSelectSystemAdmin() {
  ChooseName(*this, platform(), &SelectADObject::SelectUsers, IDC_SYSTEM_ADMIN);
  return 0;
}

std::int32_t CPropPageCompany::OnSelectServer() {
  ChooseName(*this, platform(), &SelectADObject::SelectComputers, IDC_SERVER);
  return 0;
}

}  // namespace pelora
