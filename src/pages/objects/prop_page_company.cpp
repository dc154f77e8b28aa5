// SPDX-License-Identifier: Apache-2.0
#include "pages/objects/prop_page_company.h"

#include <array>

#include "resources/resource.h"

namespace pelora {
namespace {

constexpr std::array kFields = {
    EditedFields::Field{.control = IDC_SYSTEM_ADMIN,
                        .attribute = CatalogueEntry("peloraSystemAdmin"),
                        .label = IDC_SYSTEM_ADMIN_LABEL,
                        .choose = {IDC_SYSTEM_ADMIN_SELECT, &kUserChooser}},
    EditedFields::Field{.control = IDC_SERVER,
                        .attribute = CatalogueEntry("peloraCompanyServer"),
                        .label = IDC_SERVER_LABEL,
                        .choose = {IDC_SERVER_SELECT, &kComputerChooser}},
};

}  // namespace

CPropPageCompany::CPropPageCompany(const Platform& platform)
    : CSnapInPropertyPage(platform, IID_IADs, {}, IDD_PROPPAGE_COMPANY, "Pelora"),
      account_(*this),
      fields_(*this, kFields) {
  Add(account_);
  Add(fields_);
}

}  // namespace pelora
