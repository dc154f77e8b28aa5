// SPDX-License-Identifier: Apache-2.0
#include "pages/objects/prop_page_company_rights.h"

#include <array>

#include "resources/resource.h"

namespace pelora {
namespace {

/// The lists alone: their group boxes and buttons stay.
constexpr std::array<ControlId, 2> kMultiSelectHideList = {IDC_ADMIN_LIST, IDC_VIEW_LIST};

constexpr NameList::Layout kViewers = {IDC_VIEW_LIST,
                                       IDC_VIEW_ADD,
                                       IDC_VIEW_DELETE,
                                       IDC_VIEW_GROUP,
                                       CatalogueEntry("peloraViewPrivilege"),
                                       &SelectADObject::SelectContainers};
constexpr NameList::Layout kAdministrators = {IDC_ADMIN_LIST,
                                              IDC_ADMIN_ADD,
                                              IDC_ADMIN_DELETE,
                                              IDC_ADMIN_GROUP,
                                              CatalogueEntry("peloraAdminPrivilege"),
                                              &SelectADObject::SelectUsers};

}  // namespace

CPropPageCompanyRights::CPropPageCompanyRights(const Platform& platform)
    : CSnapInPropertyPage(platform, IID_IADs, kMultiSelectHideList, IDD_PROPPAGE_COMPANY_RIGHTS,
                          "Pelora Rights"),
      viewers_(*this, platform, kViewers),
      administrators_(*this, platform, kAdministrators) {
  Add(viewers_);
  Add(administrators_);
}

}  // namespace pelora
